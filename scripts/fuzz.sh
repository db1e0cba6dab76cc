#!/usr/bin/env bash
# Builds the libFuzzer targets of tests/fuzz with clang (build/fuzz), replays their seed
# corpora, then fuzzes each target for a bounded time.
#   scripts/fuzz.sh                     25 s per target, as CI runs it
#   scripts/fuzz.sh 3600                an hour per target
#   scripts/fuzz.sh 600 MakeupFuzz      one target
# New inputs that reach new code go to build/fuzz/corpus/<target> (kept between runs);
# the seeds in tests/fuzz/corpus/<target> are only read. A fault leaves its input in
# build/fuzz/artifacts/; reproduce it with build/fuzz/tests/fuzz/<target> <input file>.
#
# The registries cache every composition text they verify, for the life of the process,
# and keep every unit a shell line registers, so a long run is cut into processes of at
# most 5 minutes each (1 for the shell, whose registrations grow faster): that growth is
# not a leak, and it must not reach the memory limit either.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-25}"
shift || true
targets=("$@")
if ((${#targets[@]} == 0)); then
  targets=(ParseTreeFuzz UnitCompositionFuzz QuantityCompositionFuzz MakeupFuzz ShellStatementFuzz)
fi

scripts/deps.sh clang libclang-rt-14-dev
cmake -S . -B build/fuzz -DCMAKE_CXX_COMPILER=clang++ -DTW_FUZZ=ON -DTW_BUILD_TESTS=OFF \
  "-DTW_WERROR=${TW_WERROR:-OFF}" \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g"
cmake --build build/fuzz -j "$(nproc)"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build/fuzz --output-on-failure

# Texts longer than this add nothing the short ones do not reach; the expression parser
# alone gets long texts, and a shell line room for a few statements.
max_len() {
  case "$1" in
    ParseTreeFuzz) echo 4096 ;;
    ShellStatementFuzz) echo 400 ;;
    *) echo 160 ;;
  esac
}

chunk_seconds() {
  case "$1" in
    ShellStatementFuzz) echo 60 ;;
    *) echo 300 ;;
  esac
}

mkdir -p build/fuzz/artifacts
passed=0
failed=0
for target in "${targets[@]}"; do
  mkdir -p "build/fuzz/corpus/$target"
  log="build/fuzz/$target.log"
  : >"$log"
  left="$seconds"
  status=0
  longest=$(chunk_seconds "$target")
  while ((left > 0 && status == 0)); do
    chunk=$((left < longest ? left : longest))
    left=$((left - chunk))
    "build/fuzz/tests/fuzz/$target" "build/fuzz/corpus/$target" "tests/fuzz/corpus/$target" \
      -dict=tests/fuzz/units.dict -max_len="$(max_len "$target")" -max_total_time="$chunk" \
      -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="build/fuzz/artifacts/$target-" >>"$log" 2>&1 || status=$?
  done
  runs=$(awk '/stat::number_of_executed_units/ {n += $2} END {print n + 0}' "$log")
  if ((status == 0)); then
    echo "$target: $runs runs in ${seconds} s, no fault"
    passed=$((passed + 1))
  else
    echo "$target: FAULT after $runs runs; log $log"
    grep -E "ERROR|fuzz fault|runtime error|terminate|what\(\)|Test unit written" "$log" | head -n 20
    failed=$((failed + 1))
  fi
done
echo "fuzz: $passed passed, $failed failed"
((failed == 0))
