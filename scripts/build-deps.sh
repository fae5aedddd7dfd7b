#!/usr/bin/env bash
# Cross-builds what the build links, once, from Debian's source packages into a cache outside the
# build tree, and prints the cache's folder for CMAKE_PREFIX_PATH.
#
# A library's folder carries its version, options and compiler in its name: another version or
# compiler makes a new one, a second checkout finds the first one's.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${ZBASIC_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zbasic}
compiler=x86_64-w64-mingw32-g++-posix
toolchain=$root/cmake/mingw-w64-x86_64.cmake
compiler_version=$("$compiler" -dumpfullversion)

package_version() { dpkg-query -W -f='${Version}' "$1"; }

# key NAME VERSION OPTIONS...: the folder of a library built just so.
key() {
    local name=$1 version=$2
    shift 2
    local options
    options=$(printf '%s\n' "$@" | sha256sum | cut -c1-8)
    printf '%s/deps/%s-%s-gcc%s-%s' "$cache" "$name" "${version//[:~]/_}" "$compiler_version" "$options"
}

# cmake_library NAME VERSION SOURCES OPTIONS...: configure, build and install one CMake project.
# Installed beside the final place and moved there whole, so that an interrupted run leaves nothing.
cmake_library() {
    local name=$1 version=$2 sources=$3
    shift 3
    local prefix
    prefix=$(key "$name" "$version" "$@")
    printf '%s\n' "$prefix"
    [ -d "$prefix" ] && return
    local work
    work=$(mktemp -d)
    {
        cmake -S "$sources" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
            -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$work/install" "$@" &&
            cmake --build "$work/build" && cmake --install "$work/build"
    } >"$work/log" 2>&1 || { tail -n 30 "$work/log" >&2; return 1; }
    mkdir -p "$(dirname "$prefix")"
    mv "$work/install" "$prefix"
    rm -rf "$work"
}

googletest=$(cmake_library googletest "$(package_version googletest)" /usr/src/googletest \
    -DINSTALL_GTEST=ON -DBUILD_GMOCK=OFF)

printf '%s\n' "$googletest"
