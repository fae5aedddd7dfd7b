#!/usr/bin/env bash
# The tools on a full disk: tools_full_disk.sh TOOL-FOLDER COMMAND... where COMMAND runs Windows
# programs. Each has to say so and to leave what was there.
set -uo pipefail

tools=$1
run=("${@:2}")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
failed=0

# tool NAME ARGUMENT...
tool() { "${run[@]}" "$tools/$1.exe" "${@:2}"; }

# expect STATUS MESSAGE NAME ARGUMENT...: files cannot grow, and standard output takes nothing.
expect() {
    local said code
    said=$(
        trap '' XFSZ  # a failing write instead of the end of the program
        ulimit -f 0
        tool "${@:3}" 2>&1 >/dev/full
    )
    code=$?
    [ "$code" -eq "$1" ] && [[ "$said" == *"$2"* ]] && return
    echo "${*:3}: status $code, $said"
    failed=1
}

mkdir work
echo '7 = "File"' >work/texts
tool zelml build work/texts work/strings.dll
echo secret | tool zeldbuser write work/user.txt admin >/dev/null
cp -a work before

expect 1 'strings.dll: cannot be written' zelml build work/texts work/strings.dll
expect 1 'user.txt: cannot be written' zeldbuser write work/user.txt other <<<secret
expect 1 'standard output: cannot be written' zelml print work/strings.dll
expect 1 'standard output: cannot be written' zelml --help
expect 1 'standard output: cannot be written' zeldbuser check work/user.txt
expect 2 'standard output: cannot be written' zelplugcheck "$tools/zbasic18.dll"
diff -r before work || failed=1
exit "$failed"
