#!/usr/bin/env bash
# Logs and plug-ins under Wine, beside spdlog and the bare system calls: log.sh BUILD-FOLDER
# The build has ZBASIC_TESTS and ZBASIC_BENCH on. Five hundred plug-ins, 490 of them refused, are
# copies of those of the tests.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bin=$(cd "$1" && pwd)/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir "$work/plugins" "$work/files"
for number in $(seq 1000 1499); do
    kind=old_version
    [ $((number % 50)) -ne 7 ] || kind=general
    cp "$bin/test_plugins/$kind.dll" "$work/plugins/p$number.dll"
done
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
"$root/cmake/wine-up"
"$root/cmake/wine-run" "$bin/bench_log.exe" "$(windows_path "$work/files")" \
    "$(windows_path "$work/plugins")"
