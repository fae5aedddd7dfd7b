#!/usr/bin/env bash
# Runs the sample host with its window on the current display, takes a picture of the screen, and
# ends the program: show-host.sh OUTPUT FRAMEBUFFER-FOLDER [HOST ARGUMENT...]
#
# OUTPUT receives the exported files, summary.txt (what the host printed) and window.png.
# Arguments that name files of this machine are handed over as Wine sees them.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
output=$1
framebuffer=$2
shift 2
bin=$root/build/cross-release/bin

windows_path() { printf 'Z:%s' "${1//\//\\}"; }

arguments=()
for argument in "$@"; do
    if [ -f "$argument" ]; then
        arguments+=("$(windows_path "$(readlink -f "$argument")")")
    else
        arguments+=("$argument")
    fi
done

trace=$output/trace.txt
pid_file=$output/pid.txt
cd "$output"  # for the log
"$root/cmake/wine-run" "$bin/zelhost.exe" "${arguments[@]}" -o"$(windows_path "$output")" \
    -trace -trf"$(windows_path "$trace")" -pidfile"$(windows_path "$pid_file")" \
    >"$output/summary.txt" 2>&1 &
host=$!

# The host writes that line when all its windows are there.
for ((tenths = 0; tenths < 6000; ++tenths)); do
    ! grep -qs 'models are open' "$trace" || break
    kill -0 "$host" 2>/dev/null || break
    sleep 0.1
done
sleep 1  # the display server paints what the program asked for

xwdtopnm "$framebuffer/Xvfb_screen0" 2>/dev/null | pnmtopng >"$output/window.png" 2>/dev/null
if kill -0 "$host" 2>/dev/null; then
    "$root/cmake/wine-run" taskkill /PID "$(tr -d '\r\n' <"$pid_file")" >/dev/null
fi
status=0
wait "$host" || status=$?
rm -f "$trace" "$pid_file"
sed -i 's/\r$//' "$output/summary.txt"
[ "$status" -eq 0 ] || cat "$output/summary.txt"
exit "$status"
