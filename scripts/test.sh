#!/usr/bin/env bash
# Builds and runs every test.
#   scripts/test.sh             release build (build/release)
#   scripts/test.sh --sanitize  AddressSanitizer + UndefinedBehaviorSanitizer, leak
#                               checking on (build/sanitize)
#   scripts/test.sh --tsan      ThreadSanitizer (build/tsan): the library and the threads'
#                               stress test only, run for TW_STRESS_SECONDS (default 20)
# TW_WERROR=ON in the environment makes every warning an error, as CI builds.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1:-}" = "--tsan" ]; then
  scripts/deps.sh --tests
  cmake -S . -B build/tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTW_TSAN=ON -DTW_BUILD_TESTS=ON \
    -DTW_BUILD_PYTHON=OFF -DTW_BUILD_OCTAVE=OFF "-DTW_WERROR=${TW_WERROR:-OFF}"
  cmake --build build/tsan -j "$(nproc)" --target threads_tests
  export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1"
  TW_STRESS_SECONDS="${TW_STRESS_SECONDS:-20}" build/tsan/tests/threads_tests
  exit
fi

flavour=release
options=(-DCMAKE_BUILD_TYPE=Release)
if [ "${1:-}" = "--sanitize" ]; then
  flavour=sanitize
  options=(-DCMAKE_BUILD_TYPE=Debug -DTW_SANITIZE=ON)
fi
# Everything that has tests, whatever an earlier configuration of the build (the demo's) chose.
options+=(-DTW_BUILD_TESTS=ON -DTW_BUILD_PYTHON=ON -DTW_BUILD_OCTAVE=ON "-DTW_WERROR=${TW_WERROR:-OFF}")

scripts/deps.sh --tests
# GNU Octave, for the Octave package and its tests.
scripts/deps.sh --no-recommends octave liboctave-dev
cmake -S . -B "build/$flavour" "${options[@]}"
cmake --build "build/$flavour" -j "$(nproc)"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir "build/$flavour" -j "$(nproc)" --output-on-failure
if [ "$flavour" = release ]; then scripts/check-install.sh build/release; fi
