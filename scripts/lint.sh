#!/usr/bin/env bash
# Checks layout (clang-format) and code (clang-tidy): lint.sh [FILE...], by default all of ours, whose
# tests clang-tidy leaves out then: they would take as long as all that is shipped.
# Needs a configured cross build: the compile commands come from it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
build=build/cross-release
mingw=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++

if [ $# -gt 0 ]; then
    files=("$@")
else
    mapfile -t files < <(git ls-files -- '*.cpp' '*.h')
fi
clang-format-14 --dry-run --Werror "${files[@]}"
[ $# -gt 0 ] || mapfile -t files < <(git ls-files -- '*.cpp' ':!tests')

# Only what the cross build compiles has compile commands.
sources=()
for file in "${files[@]}"; do
    case "$file" in
        *.cpp) ! grep -qF "\"file\": \"$root/$file\"" "$build/compile_commands.json" || sources+=("$file") ;;
    esac
done
# A source that was found clean stays so until it, a header or the set of checks changes.
clean=$build/lint
mkdir -p "$clean"
headers=$(git ls-files -- '*.h' .clang-tidy scripts/lint.sh | xargs cat | sha256sum)
stamp_of() { printf '%s/%s' "$clean" "$(printf '%s' "$headers" | cat - "$1" | sha256sum | cut -c1-32)"; }
tidy() {
    local source=$1
    clang-tidy-14 --quiet -p "$build" \
        --extra-arg-before=--target=x86_64-w64-windows-gnu --extra-arg=-nostdinc++ \
        --extra-arg=-isystem"$mingw" --extra-arg=-isystem"$mingw/x86_64-w64-mingw32" \
        --extra-arg=-isystem"$mingw/backward" --extra-arg=-isystem/usr/share/mingw-w64/include \
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-sign-conversion "$source" && touch "$(stamp_of "$source")"
}
export -f tidy stamp_of
export build clean headers mingw

pending=()
for source in "${sources[@]}"; do
    [ -f "$(stamp_of "$source")" ] || pending+=("$source")
done
[ ${#pending[@]} -gt 0 ] || exit 0
printf '%s\0' "${pending[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'tidy "$1"' tidy
