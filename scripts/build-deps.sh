#!/usr/bin/env bash
# Cross-builds what the build links, once, into a cache outside the build tree, and prints the
# folders for CMake, separated by semicolons: build-deps.sh [--bench], the latter for what only
# benchmarks link.
#
# Sources are Debian's. A library's folder carries its version, options and compiler in its name:
# another version or compiler makes a new one, a second checkout finds the first one's.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${ZBASIC_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zbasic}
compiler_version=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)

# Source packages come from the archives that this system uses, through an apt directory of our
# own: the system's configuration stays as it is.
apt_home=$cache/apt
apt_options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$apt_home/parts"
    -o "Dir::State::lists=$apt_home/lists" -o "Dir::Cache=$apt_home/cache")
# apt's sandbox user cannot write into root's home.
[ "$(id -u)" -ne 0 ] || apt_options+=(-o APT::Sandbox::User=root)

update_source_lists() {
    mkdir -p "$apt_home/parts" "$apt_home/lists/partial" "$apt_home/cache/archives/partial"
    local file
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] || continue
        sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt_home/parts/${file##*/}"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$file" ] || continue
        sed -n 's/^deb /deb-src /p' "$file" >"$apt_home/parts/$(basename "$file" .list).list"
    done
    apt-get "${apt_options[@]}" -qq update >&2
}

# The versions of a source package, newest first; the lists are fetched when there are none.
source_versions() {
    compgen -G "$apt_home/lists/*Sources*" >/dev/null || update_source_lists
    apt-cache "${apt_options[@]}" showsrc --only-source "$1" |
        sed -n 's/^Version: //p' | sort -rV
}

# unpack_source PACKAGE VERSION FOLDER: its sources with Debian's patches, in FOLDER/<one folder>.
unpack_source() {
    (cd "$3" && rm -rf ./* && apt-get "${apt_options[@]}" -qq source "$1=$2") >"$3.log" 2>&1
}

package_version() { dpkg-query -W -f='${Version}' "$1"; }

# prefix_of NAME VERSION OPTIONS...: the folder of a library built just so.
prefix_of() {
    local name=$1 version=$2
    shift 2
    local options
    options=$(printf '%s\n' "$@" | sha256sum | cut -c1-8)
    printf '%s/deps/%s-%s-gcc%s-%s' "$cache" "$name" "${version//[:~]/_}" "$compiler_version" \
        "$options"
}

# cmake_library PREFIX SOURCES OPTIONS...: configures, builds and installs a CMake project. It is
# installed elsewhere and moved into place whole, so that an interrupted run leaves nothing behind.
cmake_library() {
    local prefix=$1 sources=$2 work
    shift 2
    work=$(mktemp -d)
    {
        cmake -S "$sources" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" \
            -DCMAKE_INSTALL_PREFIX="$work/install" "$@" &&
            cmake --build "$work/build" && cmake --install "$work/build"
    } >"$work/log" 2>&1 || { tail -n 30 "$work/log" >&2; return 1; }
    mkdir -p "$(dirname "$prefix")"
    mv "$work/install" "$prefix"
    rm -rf "$work"
}

googletest() {
    local options=(-DINSTALL_GTEST=ON -DBUILD_GMOCK=OFF) prefix
    prefix=$(prefix_of googletest "$(package_version googletest)" "${options[@]}")
    [ -d "$prefix" ] || cmake_library "$prefix" /usr/src/googletest "${options[@]}" || return 1
    printf '%s' "$prefix"
}

# What the library needs of libcrypto is AES by its current interface and base64 filters; all other
# algorithms that can be left out are.
openssl_options=(mingw64 no-shared no-tests no-engine no-dso no-async no-sock no-ssl no-tls no-dtls
    no-aria no-bf no-blake2 no-camellia no-cast no-chacha no-cmac no-cmp no-cms no-comp no-ct no-des
    no-dh no-dsa no-ec no-gost no-idea no-legacy no-md4 no-mdc2 no-multiblock no-ocb no-ocsp
    no-poly1305 no-psk no-rc2 no-rc4 no-rmd160 no-scrypt no-seed no-siphash no-siv no-sm2 no-sm3
    no-sm4 no-srp no-srtp no-ts no-whirlpool no-autoload-config)

# openssl_library PREFIX SOURCES OPTIONS...: a static libcrypto, by the project's own build.
openssl_library() {
    local prefix=$1 sources=$2 work
    shift 2
    work=$(mktemp -d)
    (
        cd "$sources"
        ./Configure "$@" --cross-compile-prefix=x86_64-w64-mingw32- CC=gcc-posix &&
            make -j"$(nproc)" build_generated && make -j"$(nproc)" libcrypto.a &&
            mkdir -p "$work/install/lib" && cp libcrypto.a "$work/install/lib/" &&
            cp -r include "$work/install/"
    ) >"$work/log" 2>&1 || { tail -n 30 "$work/log" >&2; return 1; }
    mkdir -p "$(dirname "$prefix")"
    mv "$work/install" "$prefix"
    rm -rf "$work"
}

# debian_library BUILD PACKAGE OPTIONS...: a library from Debian's sources, built by the function
# BUILD. A listed version that was built before serves; else the newest that can be fetched (an
# archive's copy may lack the very newest).
debian_library() {
    local build=$1 package=$2 versions version prefix sources unpacked
    shift 2
    versions=$(source_versions "$package")
    for version in $versions; do
        prefix=$(prefix_of "$package" "$version" "$@")
        if [ -f "$prefix/copyright" ]; then
            printf '%s' "$prefix"
            return
        fi
    done
    sources=$(mktemp -d)
    for version in $versions; do
        unpack_source "$package" "$version" "$sources" || continue
        prefix=$(prefix_of "$package" "$version" "$@")
        unpacked=$(echo "$sources/${package%%[0-9]*}"*/)
        rm -rf "$prefix"
        "$build" "$prefix" "$unpacked" "$@" || return 1
        # Goes with what is linked into the library.
        cp "$unpacked/debian/copyright" "$prefix/"
        rm -rf "$sources"
        printf '%s' "$prefix"
        return
    done
    echo "No version of Debian's source package $package can be fetched:" >&2
    tail -n 5 "$sources.log" >&2
    return 1
}

googletest_folder=$(googletest)
# Pictures of the sample host. Its compression is Debian's libz-mingw-w64-dev.
libpng_folder=$(debian_library cmake_library libpng1.6 \
    -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF)
# The engine of the pattern matchers.
pcre2_folder=$(debian_library cmake_library pcre2 \
    -DPCRE2_SUPPORT_JIT=ON -DPCRE2_BUILD_PCRE2GREP=OFF -DPCRE2_BUILD_TESTS=OFF)
openssl_folder=$(debian_library openssl_library openssl "${openssl_options[@]}")
folders="$googletest_folder;$libpng_folder;$pcre2_folder;$openssl_folder"
if [ "${1:-}" = --bench ]; then
    # It would ask git for its version, in a folder that has no history.
    benchmark_folder=$(debian_library cmake_library benchmark -DGIT_VERSION=0.0.0 \
        -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF)
    folders+=";$benchmark_folder"
fi
printf '%s\n' "$folders"
