#!/usr/bin/env bash
# Builds the plug-in template against an installed library and runs its command in the host:
# plugin_template.sh BUILD-FOLDER TEMPLATE-FOLDER TOOLCHAIN-FILE EMULATOR
set -euo pipefail

build=$1 template=$2 toolchain=$3 emulator=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/installed" >/dev/null
cmake -G Ninja -S "$template" -B "$work/build" "-DZBASIC_ROOT=$work/installed" \
    "-DCMAKE_TOOLCHAIN_FILE=$toolchain" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$work/build" >/dev/null
cp "$work/build/wordcount.dll" "$work/installed/bin/plugins/"
"$emulator" "$work/installed/bin/zelplugcheck.exe" "$work/build/wordcount.dll" | tail -n 1 |
    grep -q '^would be taken'
cd "$work"
echo 'graph [ ]' >model.gml
"$emulator" "$work/installed/bin/zelhost.exe" model '-runwordcount one two  three' -no_windows |
    grep -q '^3 words'
