#!/usr/bin/env bash
# Writes the API documentation of the public headers as HTML to build/apidocs. Fails when a public
# name has no comment, and on any other warning.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
rm -rf build/apidocs
mkdir -p build
doxygen docs/Doxyfile
echo "build/apidocs/index.html"
