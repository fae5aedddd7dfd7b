#!/usr/bin/env bash
# Writes the API documentation of the public headers as HTML to build/apidocs. Fails when a public
# name has no comment, when a comment refers to a name that there is not, and on any other warning.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
rm -rf build/apidocs
mkdir -p build
python3 -m doctest scripts/apidocs_filter.py
doxygen docs/Doxyfile
echo "build/apidocs/index.html"
