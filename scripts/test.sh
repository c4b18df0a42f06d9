#!/usr/bin/env bash
# Builds and runs every test: the unit and scenario tests on the virtual
# clock, the integration tests (ptys, sockets, processes), the GUI tests
# (offscreen and under Xvfb), then the same tests built with
# AddressSanitizer and UndefinedBehaviorSanitizer, then the fuzzers for a
# bounded time. Installs whatever is missing first.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
"$top/scripts/deps.sh"

echo "== build"
"$top/scripts/build.sh"
"$top/scripts/prepare-home.sh" "$top/build/bin"

echo "== tests"
ctest --test-dir "$top/build" --output-on-failure -j "$(nproc)"

echo "== tests under AddressSanitizer and UndefinedBehaviorSanitizer"
BUILD_DIR="$top/build-asan" BUILD_TYPE=Debug CMAKE_EXTRA="-DFIRMCAST_SANITIZE=ON -DFIRMCAST_GUI=OFF" \
    "$top/scripts/build.sh"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir "$top/build-asan" --output-on-failure -j "$(nproc)"

if [ -x "$top/scripts/fuzz.sh" ]; then
    echo "== fuzzers"
    FUZZ_SECONDS=${FUZZ_SECONDS:-20} "$top/scripts/fuzz.sh"
fi
echo "== all tests passed"
