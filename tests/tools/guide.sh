#!/usr/bin/env bash
# What a newcomer gets: follows docs/guide.md step by step against the installed library.
# guide.sh BUILD-FOLDER SOURCE-FOLDER EMULATOR
. "$(dirname "$0")/installed.sh"

x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -static \
    "$source/tests/tools/guide/press.cpp" -o "$work/press.exe" -luser32
mkdir "$work/tally"
cd "$work/tally"
export CXXFLAGS='-Wall -Wextra -Werror'
python3 "$source/tests/tools/guide/follow.py" "$source/docs/guide.md" "$sdk" "$emulator" \
    "$work/press.exe"
