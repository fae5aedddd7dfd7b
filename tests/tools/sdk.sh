#!/usr/bin/env bash
# What others get: builds the example and the plug-in template against the installed library and
# against the build tree, and runs both. sdk.sh BUILD-FOLDER SOURCE-FOLDER EMULATOR
. "$(dirname "$0")/installed.sh"

# build_against PREFIX TOOLCHAIN PROJECT: in $work/PROJECT.
build_against() {
    rm -rf "${work:?}/$3"
    {
        cmake -G Ninja -S "$source/$3" -B "$work/$3" "-DCMAKE_PREFIX_PATH=$1" \
            "-DCMAKE_TOOLCHAIN_FILE=$2" -DCMAKE_BUILD_TYPE=Release && cmake --build "$work/$3"
    } >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

# The template's command in the host.
try_plugin() {
    cp "$work/tools/plugin-template/wordcount.dll" "$sdk/bin/plugins/"
    "$emulator" "$sdk/bin/zelplugcheck.exe" "$sdk/bin/plugins/wordcount.dll" | tail -n 1 |
        grep -q '^would be taken'
    (cd "$work" && echo 'graph [ ]' >model.gml &&
        "$emulator" "$sdk/bin/zelhost.exe" model '-runwordcount one two  three' -no_windows) |
        grep -q '^3 words'
    rm "$sdk/bin/plugins/wordcount.dll"
}

ours=$source/cmake/mingw-w64-x86_64.cmake
for tree in "$sdk $sdk/share/cmake/zbasic/mingw-w64-x86_64.cmake" "$build $ours"; do
    read -r prefix toolchain <<<"$tree"
    build_against "$prefix" "$toolchain" examples/hello-host
    hello=$work/examples/hello-host/hello-host.exe
    printed=$(cd "$work" && "$emulator" "$hello" '*server*' web-server printer Mailserver -lang1031)
    [[ "$printed" == web-server*Mailserver*"2 in "*"zbasic 1.8."* ]]
    code=0
    (cd "$work" && "$emulator" "$hello" '*server*' printer >/dev/null) || code=$?
    [ "$code" -eq 1 ]
    build_against "$prefix" "$toolchain" tools/plugin-template
    try_plugin
done

# The list of contents names every file with its checksum, and what is linked in with its licence.
python3 - "$sdk" <<'END'
import hashlib, json, pathlib, sys

root = pathlib.Path(sys.argv[1])
name = "share/zbasic/zbasic.spdx.json"
contents = json.loads((root / name).read_text())
listed = {file["fileName"].removeprefix("./"): file["checksums"][1]["checksumValue"]
          for file in contents["files"]}
there = {str(path.relative_to(root)): hashlib.sha256(path.read_bytes()).hexdigest()
         for path in root.rglob("*") if path.is_file()}
del there[name]
assert listed == there, set(listed.items()) ^ set(there.items())
parts = {package["name"] for package in contents["packages"]} - {"zbasic"}
assert parts == {"libpng", "pcre2", "openssl", "zlib", "gcc-runtime", "mingw-w64-runtime"}, parts
licences = {path.stem for path in (root / "share/zbasic/licences").iterdir()}
assert licences == parts, licences
END

# The ZIP holds the same, in one folder.
cpack -G ZIP --config "$build/CPackConfig.cmake" -B "$work/zip" >"$work/log" 2>&1 ||
    { cat "$work/log" >&2; exit 1; }
python3 - "$sdk" "$work"/zip/*.zip <<'END'
import pathlib, sys, zipfile

root = pathlib.Path(sys.argv[1])
name = pathlib.Path("share/zbasic/zbasic.spdx.json")  # which says when it was made
there = {path.relative_to(root): path.read_bytes() for path in root.rglob("*") if path.is_file()}
with zipfile.ZipFile(sys.argv[2]) as package:
    files = [entry for entry in package.namelist() if not entry.endswith("/")]
    packed = {pathlib.Path(*pathlib.Path(entry).parts[1:]): package.read(entry)
              for entry in files}
    assert len({pathlib.Path(entry).parts[0] for entry in files}) == 1, files
assert packed.pop(name) and there.pop(name)
assert packed == there, {path for path, _ in packed.items() ^ there.items()}
END

# Without CMake, by pkg-config.
read -ra flags < <(PKG_CONFIG_LIBDIR=$sdk/lib/pkgconfig pkg-config --cflags --libs zbasic)
x86_64-w64-mingw32-g++-posix -std=c++20 "$source/examples/hello-host/main.cpp" \
    -o "$sdk/bin/plain.exe" "${flags[@]}"
"$emulator" "$sdk/bin/plain.exe" 'a?c' abc | grep -q '^abc'

# Symbols lie apart, and belong to the file.
for file in zbasic18.dll sv18.dll zelhost.exe; do
    [ -s "$sdk/bin/.debug/$file.debug" ]
    x86_64-w64-mingw32-objdump -h "$sdk/bin/$file" | grep -q gnu_debuglink
    if x86_64-w64-mingw32-objdump -h "$sdk/bin/$file" | grep '\.debug_info'; then
        echo "$file still has its symbols" >&2
        exit 1
    fi
done
