#!/usr/bin/env bash
# Does very many operations of all families in a random order, under Wine, and shows at each tenth
# what the process holds: soak.sh [OPERATIONS] [SEED]. Fails when an operation's result is wrong or
# when the process holds more at the end than after the first tenth.
# Needs a cross build with tests.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/cmake/wine-up"
xvfb-run -a nice "$root/cmake/wine-run" "$root/build/cross-release/bin/soak.exe" \
    "${1:-10000000}" "${2:-1}"
