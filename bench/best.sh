#!/usr/bin/env bash
# The best of forty short rounds of each work that a native benchmark does, the works taking turns,
# in the benchmark's unit: best.sh PROGRAM [FILTER]. Says more than a mean where others use the
# machine as well.
set -euo pipefail

"$1" --benchmark_filter="${2:-.}" --benchmark_repetitions=40 --benchmark_min_time=0.01 \
    --benchmark_enable_random_interleaving=true --benchmark_format=csv 2>/dev/null |
    awk -F, '
        /^"/ && !/_(mean|median|stddev|cv)"/ {
            name = $1
            gsub(/"|\/repeats.*/, "", name)
            if (!(name in best) || $4 < best[name]) best[name] = $4
        }
        END { for (name in best) printf "%-40s %12.1f\n", name, best[name] }' | sort
