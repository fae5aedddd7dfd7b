#!/usr/bin/env bash
# Looks for inputs that break a fuzz target: fuzz.sh TARGET [SECONDS], fuzz.sh all [SECONDS] for one
# after the other with a line each, fuzz.sh for their names. 60 seconds by default, for each.
#
# Starts from the target's corpus and leaves that as it is: inputs that reach further are gathered
# in build/fuzz/TARGET/corpus, and an input that breaks something is written beside that folder,
# where `all` leaves the target's output as well. Exit status: 0 nothing found, 1 something, 2 wrong
# usage.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
mapfile -t targets < <(for source in fuzz/*_fuzz.cpp; do basename "$source" _fuzz.cpp; done)
refuse() {
    echo "fuzz.sh: $1" >&2
    exit 2
}

if [ $# -eq 0 ]; then
    printf '%s\n' "${targets[@]}"
    exit
fi
target=$1
seconds=${2:-60}
[ $# -le 2 ] || refuse "too many arguments: fuzz.sh TARGET [SECONDS]"
[[ $seconds =~ ^[1-9][0-9]*$ ]] || refuse "$seconds is no number of seconds"
[ "$target" = all ] || [ -f "fuzz/${target}_fuzz.cpp" ] ||
    refuse "there is no fuzz/${target}_fuzz.cpp; without arguments all targets are listed"

# As it is now: a program of yesterday would find what is repaired already.
log=build/fuzz/build.log
mkdir -p build/fuzz
scripts/build.sh native-debug >"$log" 2>&1 || refuse "the build failed, see $log"

# An input that takes long is told, and kept, but is no fault until it takes a minute.
fuzz() {
    local found=build/fuzz/$1
    mkdir -p "$found/corpus"
    "build/native-debug/native/fuzz/fuzz_$1" -max_total_time="$seconds" -timeout=60 \
        -artifact_prefix="$found/" -print_final_stats=1 "$found/corpus" "fuzz/corpus/$1"
}

# Of the output of a target: its runs, and what its last line says it has reached.
figures_of() {
    local runs reached='s/^#[0-9]+.* cov: ([0-9]+) ft: ([0-9]+) .*/\1 edges, \2 features/p'
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$1")
    printf '%10s runs, %s' "${runs:-?}" "$(sed -nE "$reached" "$1" | tail -n 1)"
}

if [ "$target" != all ]; then
    fuzz "$target" && exit
    echo "fuzz.sh: $target broke; what broke it lies in build/fuzz/$target" >&2
    exit 1
fi
broken=0
for target in "${targets[@]}"; do
    output=build/fuzz/$target.log
    result=ok
    if ! fuzz "$target" >"$output" 2>&1; then
        result=$(sed -n 's/^.*Test unit written to //p' "$output" | tail -n 1)
        broken=1
    fi
    printf '%-20s %s: %s\n' "$target" "$(figures_of "$output")" "${result:-broken, see $output}"
done
exit "$broken"
