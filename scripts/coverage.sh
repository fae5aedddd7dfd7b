#!/usr/bin/env bash
# Counts which lines and branches the tests run, and prints the share of each folder and the files
# below 90 % of their lines. Two builds count together: the one for Windows, whose tests run under
# Wine, and the Windows-free sources on this machine. docs/testing.md tells what the shares mean.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
. scripts/steps.sh

command -v gcovr >/dev/null || { echo "coverage.sh needs the package gcovr." >&2; exit 2; }

windows=build/cross-coverage
native=build/native-coverage
pages=build/coverage
# Not below the builds: the reader of the counters follows the links to the drives.
export ZBASIC_WINEPREFIX=$root/$pages/wine

stop() { cmake/wine-down >/dev/null 2>&1 || true; }
trap stop EXIT

# What looks at the shipped files, and at what optimised code leaves in memory.
left_out='^(api\.|tools\.(sdk|guide)|crypt\.Secrets)'

# The counters are written beside the objects, whose paths Windows programs find on drive Z.
run_under_wine() {
    GCOV_PREFIX=Z: xvfb-run -a -s "-screen 0 1280x1024x24" \
        ctest --test-dir "$windows" --output-on-failure -E "$left_out"
}

# read_counters BUILD GCOV: leaves them in BUILD/coverage.json. The branches that an exception could
# take out of every call are not counted, nor what stands in for Windows in native builds. A process
# that was ended while it wrote leaves counts that the reader takes for errors.
read_counters() {
    gcovr --root . --gcov-executable "$2" --gcov-ignore-parse-errors --exclude-throw-branches \
        --exclude-unreachable-branches --filter '(basic|sv|host|tools)/' --exclude '.*_native\.cpp' \
        --json "$1/coverage.json" "$1"
}

# folders ROWS, low_files ROWS: what gcovr writes as rows (file, lines, covered lines, share, branches,
# covered branches), told a folder and a file.
percent='function percent(part, all) { return all ? sprintf("%.1f", 100 * part / all) : "-" }'
folders() {
    awk -F, "$percent"'
        NR == 1 { next }
        { folder = $1; sub("/[^/]*$", "", folder); names[folder]; names["all"] }
        { n = split(folder " all", keys, " ") }
        { for (i = 1; i <= n; i++) {
              lines[keys[i]] += $2; run[keys[i]] += $3; branches[keys[i]] += $5; taken[keys[i]] += $6 } }
        END {
            for (name in names)
                printf "%-28s %6d %7s %9d %7s\n", name, lines[name], percent(run[name], lines[name]),
                    branches[name], percent(taken[name], branches[name]) }' "$1" | sort
}
low_files() {
    awk -F, "$percent"'NR > 1 && $3 < 0.9 * $2 { printf "%7s  %s (%d of %d lines)\n", percent($3, $2), $1, $3, $2 }' \
        "$1" | sort -n
}

step "Building for Windows" scripts/build.sh cross-coverage
step "Building the Windows-free sources" scripts/build.sh native-coverage
find "$windows" "$native" -name '*.gcda' -delete
step "Starting Wine" cmake/wine-up
step "Running the tests under Wine" run_under_wine
step "Running the native tests" ctest --test-dir "$native" --output-on-failure
step "Reading the counters of Windows programs" read_counters "$windows" x86_64-w64-mingw32-gcov-posix
step "Reading the counters of native programs" read_counters "$native" gcov
step "Writing $pages/index.html" gcovr --root . -a "$windows/coverage.json" -a "$native/coverage.json" \
    --csv "$pages/files.csv" --html-details "$pages/index.html"

printf '\n%-28s %6s %7s %9s %7s\n' folder lines '%' branches '%'
folders "$pages/files.csv"
printf '\nFiles below 90 %% of their lines:\n'
low_files "$pages/files.csv"
