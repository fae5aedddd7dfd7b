# Sourced by scripts that tell a user what they do: one line a step, with the time it took.

# step TEXT COMMAND...: runs the command unseen. Its output is shown (the end of it) only when it
# fails, and the script then ends with its exit status.
step() {
    local text=$1 log status=0 start=$SECONDS
    shift
    printf '%s ... ' "$text"
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    if [ "$status" -eq 0 ]; then
        printf '%d s\n' $((SECONDS - start))
    else
        printf 'failed after %d s:\n' $((SECONDS - start))
        tail -n 60 "$log"
    fi
    rm -f "$log"
    [ "$status" -eq 0 ] || exit "$status"
}
