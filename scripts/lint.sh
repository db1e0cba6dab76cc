#!/usr/bin/env bash
# The checks a reviewer would otherwise make by hand, as CI runs them:
#   - every C++ file of ours is formatted as .clang-format says (clang-format);
#   - the library's, the host's and the shell's sources are clean of the checks in
#     .clang-tidy, run in parallel over the compile commands of the release build.
#   scripts/lint.sh            both
#   scripts/lint.sh --format   the format check alone (a second or two)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh clang-format clang-tidy
mapfile -t sources < <(git ls-files '*.cpp' '*.hpp')
clang-format --dry-run --Werror "${sources[@]}"
echo "format: ${#sources[@]} files as .clang-format says"
if [ "${1:-}" = "--format" ]; then exit 0; fi

# The compile commands only; nothing is built. The tests need not be configured.
cmake -S . -B build/tidy -DCMAKE_BUILD_TYPE=Release -DTW_BUILD_TESTS=OFF -DTW_BUILD_PYTHON=OFF \
  -DTW_BUILD_OCTAVE=OFF >/dev/null
run-clang-tidy -quiet -p build/tidy -j "$(nproc)" "^$PWD/(units|host|shell)/" >build/tidy/report.txt 2>&1 \
  || { grep -E "warning:|error:" -A3 build/tidy/report.txt; echo "clang-tidy: findings above"; exit 1; }
echo "clang-tidy: clean ($(grep -c '^clang-tidy' build/tidy/report.txt || true) files)"
