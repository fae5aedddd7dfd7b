#!/usr/bin/env bash
# Builds the dependencies and one preset: build.sh [PRESET] [CMake option...]
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-cross-release}
[ $# -eq 0 ] || shift
options=("$@")
deps=()
case " ${options[*]} " in
    *' -DZBASIC_BENCH=ON '*) deps+=(--bench) ;;
esac
case "$preset" in
    cross-*) options+=("-DZBASIC_DEPS=$("$root/scripts/build-deps.sh" "${deps[@]}")") ;;
esac
cd "$root"
cmake --preset "$preset" "${options[@]}"
cmake --build --preset "$preset"
