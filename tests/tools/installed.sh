# Sourced by the tests of what others get: installed.sh BUILD-FOLDER SOURCE-FOLDER EMULATOR. They
# stop at the first fault, naming it. Makes `work`, a folder that goes with the test, and in it
# `sdk`, the installed library.
set -euo pipefail

build=$1 source=$2 emulator=$3
work=$(mktemp -d)
sdk=$work/sdk
trap 'rm -rf "$work"' EXIT
trap 'echo "line $LINENO: $BASH_COMMAND" >&2' ERR

# The package moves: it is found where it lies, not where it was made for.
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$sdk"
