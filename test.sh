#!/usr/bin/env bash
# Builds everything and runs all checks. Needs no set-up: it installs what is missing.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$root"
. scripts/steps.sh

stop() { cmake/wine-down >/dev/null 2>&1 || true; }
trap stop EXIT

started=$SECONDS
step "Installing missing packages" scripts/install-packages.sh test
step "Building dependencies" scripts/build-deps.sh
step "Building the library, the host and the tools" scripts/build.sh cross-release -DZBASIC_TESTS=ON
step "Starting Wine" cmake/wine-up
results=build/cross-release/tests.log
step "Running the tests under Wine" xvfb-run -a -s "-screen 0 1280x1024x24" \
    ctest --test-dir build/cross-release -j "$(nproc)" --output-on-failure -O "$root/$results"
step "Building the Windows-free sources with sanitizers" scripts/build.sh native-debug
step "Running their tests" ctest --test-dir build/native-debug -j "$(nproc)" --output-on-failure
step "Building them with the thread sanitizer" scripts/build.sh native-threads
step "Running the tests of threads" ctest --test-dir build/native-threads --output-on-failure
step "Checking layout and code" scripts/lint.sh
step "Making the documentation of the interface" scripts/apidocs.sh
grep -E 'tests passed|tests failed' "$results"
echo "All checks passed in $((SECONDS - started)) s."
