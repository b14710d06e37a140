#!/usr/bin/env bash
# Sets up, builds and runs every test: the whole suite in a release build, then the
# non-GUI suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
jobs=$(nproc)

echo "== release build and tests"
cmake --preset ci >/dev/null
cmake --build --preset ci -j "$jobs"
QT_QPA_PLATFORM=offscreen ctest --preset ci -j "$jobs"

echo "== sanitizer build and tests"
cmake --preset asan -DZV_BUILD_GUI=OFF >/dev/null
cmake --build --preset asan -j "$jobs"
ctest --preset asan -j "$jobs"
