#!/usr/bin/env bash
# The best of forty short rounds of each work that a benchmark does, the works taking turns, in the
# benchmark's unit: best.sh PROGRAM [FILTER]. Says more than a mean where others use the machine as
# well. A program for Windows is run under Wine, and its time is that on the clock: what it is told of
# its processor time goes in steps of 15 milliseconds.
set -euo pipefail

run=()
column=4
case "$1" in
    *.exe)
        run=("$(dirname "${BASH_SOURCE[0]}")/../cmake/wine-run")
        column=3
        ;;
esac
"${run[@]}" "$1" --benchmark_filter="${2:-.}" --benchmark_repetitions=40 --benchmark_min_time=0.01 \
    --benchmark_enable_random_interleaving=true --benchmark_format=csv 2>/dev/null |
    awk -F, -v column=$column '
        /^"/ && !/_(mean|median|stddev|cv)"/ {
            name = $1
            gsub(/"|\/repeats.*/, "", name)
            if (!(name in best) || $column < best[name]) best[name] = $column
        }
        END { for (name in best) printf "%-40s %12.1f\n", name, best[name] }' | sort
