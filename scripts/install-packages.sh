#!/usr/bin/env bash
# Installs the Debian packages that are missing: install-packages.sh demo|test
set -euo pipefail

build=(g++-mingw-w64-x86-64-posix mingw-w64-tools cmake ninja-build googletest
    libz-mingw-w64-dev dpkg-dev ca-certificates)
run=(wine wine64 xvfb xauth fonts-wine fonts-liberation netpbm)
test_only=(clang-format-14 clang-tidy-14 clang-14 libclang-rt-14-dev g++ libgtest-dev libpcre2-dev
    libssl-dev openssl doxygen locales faketime libxml2-utils graphviz graphviz-doc python3 git
    pkg-config)

case "${1:-}" in
    demo) packages=("${build[@]}" "${run[@]}") ;;
    test) packages=("${build[@]}" "${run[@]}" "${test_only[@]}") ;;
    *) echo "usage: install-packages.sh demo|test" >&2; exit 2 ;;
esac

missing=()
for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
        missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
    as_root=(env)
elif command -v sudo >/dev/null; then
    as_root=(sudo)
else
    echo "These packages are missing, and only root (or sudo) may install them:" >&2
    echo "  apt-get install ${missing[*]}" >&2
    exit 1
fi

"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
