#!/usr/bin/env bash
# Instructions per operation, ours beside UDUNITS-2's, counted by callgrind: figures
# that other work on the machine does not disturb, unlike times. Each figure is the
# difference between two runs of a units_bench child task that differ only in how many
# times they repeat the operation, divided by that number.
#   bench/instruction_counts.sh [path/to/units_bench]   (default build/release/bench/units_bench)
# Needs valgrind (apt-get install valgrind).
set -euo pipefail
cd "$(dirname "$0")/.."

bench="${1:-build/release/bench/units_bench}"
command -v valgrind >/dev/null || { echo "valgrind is needed: apt-get install valgrind" >&2; exit 1; }
[ -x "$bench" ] || { echo "no $bench: build with -DTW_BUILD_BENCH=ON first" >&2; exit 1; }

repeats=20000

# Instructions of one run of the child task given as arguments.
instructions() {
  valgrind --tool=callgrind --callgrind-out-file=/dev/null "$bench" "--tw-child=$1" "${@:2}" 2>&1 |
    sed -n 's/.*Collected : \([0-9]*\).*/\1/p'
}

# Instructions per repetition: (run with n repeats - run with none) / n.
conversion() {  # side from to
  local none many
  none=$(instructions repeat_conversion "$1" "$2" "$3" 0)
  many=$(instructions repeat_conversion "$1" "$2" "$3" "$repeats")
  echo $(((many - none) / repeats))
}
first_sight() {  # side short|long
  local none many
  none=$(instructions repeat_first_sight "$1" "$2" "$repeats" 0)
  many=$(instructions repeat_first_sight "$1" "$2" "$repeats" "$repeats")
  echo $(((many - none) / repeats))
}

row() { printf '%-62s %10s %10s %7s\n' "$@"; }
ratio() { awk -v peer="$1" -v ours="$2" 'BEGIN { printf "%.1fx", peer / ours }'; }

row "Instructions per operation" "ours" "UDUNITS-2" "ratio"
for pair in "mile meter" "kilometer/hour meter/second" "kelvin fahrenheit" \
  "kelvin degree_rankine"; do
  set -- $pair
  ours=$(conversion ours "$1" "$2")
  peer=$(conversion udunits "$1" "$2")
  row "conversion $1 -> $2 (cached / parse both)" "$ours" "$peer" "$(ratio "$peer" "$ours")"
done
for text in short long; do
  ours=$(first_sight ours "$text")
  peer=$(first_sight udunits "$text")
  row "first sight of the $text text / ut_parse" "$ours" "$peer" "$(ratio "$peer" "$ours")"
done
