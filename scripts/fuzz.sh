#!/usr/bin/env bash
# Looks for inputs that break a fuzz target: fuzz.sh TARGET [SECONDS], fuzz.sh for their names.
#
# Starts from the target's corpus and leaves that as it is: inputs that reach further are gathered
# below build/fuzz, and an input that breaks something is written there, too.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
if [ $# -eq 0 ]; then
    for source in fuzz/*_fuzz.cpp; do basename "$source" _fuzz.cpp; done
    exit
fi
target=$1
seconds=${2:-60}
[ -f "fuzz/${target}_fuzz.cpp" ] ||
    { echo "There is no fuzz/${target}_fuzz.cpp; fuzz.sh without arguments lists the targets." >&2; exit 2; }

program=build/native-debug/native/fuzz/fuzz_$target
[ -x "$program" ] || scripts/build.sh native-debug >/dev/null
found=build/fuzz/$target
mkdir -p "$found/corpus"
exec "$program" -max_total_time="$seconds" -artifact_prefix="$found/" -print_final_stats=1 \
    "$found/corpus" "fuzz/corpus/$target"
