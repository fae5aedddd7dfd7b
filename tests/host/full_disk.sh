#!/bin/sh
# Lets the sample host write to what seems to be a full disk: full_disk.sh COMMAND...
#
# Files may not grow beyond 8 KiB. The host has to say so and to leave the old files as they were.
set -eu

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

{
    echo 'graph ['
    for id in $(seq 400); do echo "node [ id $id ]"; done
    echo ']'
} >large.gml
echo 'graph [ ]' >small.gml
mkdir out
echo old >out/large.gml

status=0
(
    trap '' XFSZ  # a failing write instead of the end of the program
    ulimit -f 16  # of 512 bytes
    exec "$@" large.gml small.gml -oout -no_windows >/dev/null 2>errors
) || status=$?

fail() {
    echo "$1"
    cat errors
    ls -l out
    exit 1
}
[ "$status" -eq 1 ] || fail "the exit status is $status"
grep -q '\\out\\large\.gml: cannot be written: ' errors || fail 'there is no message'
[ "$(cat out/large.gml)" = old ] || fail 'the old file has changed'
[ "$(ls out | tr '\n' ' ')" = 'large.gml small.edges.csv small.gml small.graphml small.nodes.csv small.png ' ] ||
    fail 'other files are there'
