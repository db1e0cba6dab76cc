#!/usr/bin/env bash
# Runs the registry model test (tests/RegistryModelTest.cpp) for many seeds, each seed in a
# process of its own, in the sanitizer build.
#   scripts/model.sh                 200 seeds of 1000 steps
#   scripts/model.sh 50 400          50 seeds of 400 steps
# A failing seed leaves its log, with the steps that led to the failure, in
# build/sanitize/model/seed-<n>.log.
set -euo pipefail
cd "$(dirname "$0")/.."

seeds="${1:-200}"
steps="${2:-1000}"

scripts/deps.sh --tests
cmake -S . -B build/sanitize -DCMAKE_BUILD_TYPE=Debug -DTW_SANITIZE=ON
cmake --build build/sanitize -j "$(nproc)" --target units_tests
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export TW_MODEL_SEEDS="$seeds" TW_MODEL_STEPS="$steps"
mkdir -p build/sanitize/model
rm -f build/sanitize/model/*.log

# The test's instances count from 0; instance n runs seed n + 1.
run_seed() {
  local log="build/sanitize/model/seed-$(($1 + 1)).log"
  if build/sanitize/tests/units_tests --gtest_filter="Seeds/RegistryModel.*/$1" >"$log" 2>&1; then
    rm "$log"
  else
    echo "seed $(($1 + 1)) failed: $log"
  fi
}
export -f run_seed
seq 0 $((seeds - 1)) | xargs -P "$(nproc)" -I{} bash -c 'run_seed {}'
failed=$(find build/sanitize/model -name 'seed-*.log' | wc -l)
echo "model: $((seeds - failed)) passed, $failed failed ($steps steps each)"
((failed == 0))
