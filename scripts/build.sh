#!/usr/bin/env bash
# Configures and builds into build/ (programs in build/bin/).
# BUILD_DIR and extra CMake options may be given in the environment.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$top/build}
cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} ${CMAKE_EXTRA:-} >/dev/null
cmake --build "$build" -j "$(nproc)"
