#!/usr/bin/env bash
# Start to end of zelhost on a small model without windows, beside an empty program on the same two
# DLLs: start.sh [MODEL.gml [ROUNDS]]. Rounds alternate; the medians are compared.
# Needs: scripts/build.sh cross-release -DZBASIC_BENCH=ON
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
model=$(readlink -f "${1:-$root/host/models/order.gml}")
rounds=${2:-21}
bin=$root/build/cross-release/bin
output=$(mktemp -d)
trap 'rm -rf "$output"' EXIT
"$root/cmake/wine-up"

# milliseconds COMMAND...
milliseconds() {
    local start=$EPOCHREALTIME
    "$@" >/dev/null 2>&1
    local end=$EPOCHREALTIME
    echo $(((${end/./} - ${start/./}) / 1000))
}
empty() { milliseconds "$root/cmake/wine-run" "$bin/bench_empty.exe"; }
host() {
    milliseconds "$root/cmake/wine-run" "$bin/zelhost.exe" \
        "Z:${model//\//\\}" -no_windows "-oZ:${output//\//\\}"
}

empty >/dev/null
host >/dev/null
for ((i = 0; i < rounds; ++i)); do
    empty >>"$output/empty"
    host >>"$output/host"
done
compgen -G "$output/*.png" >/dev/null || { echo "zelhost has exported nothing" >&2; exit 1; }
median() { sort -n "$1" | sed -n "$((rounds / 2 + 1))p"; }
e=$(median "$output/empty")
h=$(median "$output/host")
echo "empty program $e ms, zelhost $h ms, ratio $(awk -v h="$h" -v e="$e" 'BEGIN { printf "%.2f", h / e }')"
