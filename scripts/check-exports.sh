#!/usr/bin/env bash
# Holds what a DLL exports against a checked-in list: check-exports.sh [--update] DLL LIST
# A change of the interface so shows up in review; --update writes the list anew.
set -euo pipefail

update=
if [ "${1:-}" = --update ]; then
    update=1
    shift
fi
[ $# -eq 2 ] || { echo "usage: check-exports.sh [--update] DLL LIST" >&2; exit 2; }
dll=$1
list=$2
prefix=x86_64-w64-mingw32-
command -v "${prefix}objdump" >/dev/null || prefix=

exported=$("${prefix}objdump" -p "$dll" | sed -n '/Ordinal\/Name Pointer/,/^$/p' |
    awk '/\[/ { print $NF }' | grep -v '^Table$' | "${prefix}c++filt" | LC_ALL=C sort -u)
if [ -n "$update" ]; then
    printf '%s\n' "$exported" >"$list"
elif ! diff -u "$list" <(printf '%s\n' "$exported"); then
    echo "The exports of ${dll##*/} differ from ${list##*/}." >&2
    exit 1
fi
