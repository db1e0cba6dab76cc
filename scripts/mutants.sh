#!/usr/bin/env bash
# Measures what the tests catch. Seeds one small fault at a time into a copy of the library's
# sources (units/), rebuilds incrementally, runs the tests, and reports how many faults were
# caught, with the survivors listed.
#
#   scripts/mutants.sh [--which] [SEED] [SAMPLE] [CTEST-ARGS...]
#
# SEED (default 1) and SAMPLE (default 60) choose which faults: every place in units/ where one
# of the operators below can be swapped is a candidate, and SAMPLE of them are drawn with SEED.
# The same seed and sample give the same faults on the same sources. CTEST-ARGS, if any, are
# passed to ctest (e.g. -R transcript to see what the transcripts alone catch). --which runs
# every selected test on each fault instead of stopping at the first failure, and names the
# tests that failed: with the unit tests one per process (-E 'units_tests\.whole'), which tests
# catch each fault, and which faults only one test catches.
#
# The copy and its build live in build/mutants; the checkout is never changed. A fault that does
# not compile is left out of the count; a test run that takes longer than a minute per test
# counts as caught (the fault made something hang). A survivor that scripts/mutants-equivalent.txt
# shows cannot change behaviour is listed apart, with the reason, and left out of the share.
set -euo pipefail
cd "$(dirname "$0")/.."

which=0
if [ "${1:-}" = "--which" ]; then
  which=1
  shift
fi
seed=${1:-1}
sample=${2:-60}
shift $(($# < 2 ? $# : 2))
if ! [[ "$seed" =~ ^[0-9]+$ && "$sample" =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: scripts/mutants.sh [--which] [SEED] [SAMPLE] [CTEST-ARGS...] (whole numbers)" >&2
  exit 2
fi

scripts/deps.sh --tests python3 rsync
work=build/mutants
mkdir -p "$work"
# Only files whose content changed are copied, with fresh times, so the incremental build sees them.
rsync -rlp --checksum --delete --exclude /build --exclude /.git ./ "$work/src/"
# Optimised less than a release: each fault rebuilds faster, and the tests stay quick.
cmake -S "$work/src" -B "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" \
  -DTW_BUILD_BENCH=OFF -DTW_BUILD_OCTAVE=OFF -DTW_BUILD_PYTHON=OFF >/dev/null
cmake --build "$work/build" -j "$(nproc)" >/dev/null
if ! ctest --test-dir "$work/build" -j "$(nproc)" --timeout 60 -Q "$@"; then
  echo "The tests fail without any fault seeded; fix that first." >&2
  exit 1
fi

python3 - "$work" "$which" "$seed" "$sample" "$@" <<'PY'
import pathlib, random, re, subprocess, sys

work, which = pathlib.Path(sys.argv[1]), sys.argv[2] == "1"
seed, sample, ctest_args = int(sys.argv[3]), int(sys.argv[4]), sys.argv[5:]
src = work / "src"
# Each fault swaps one operator. Binary operators are matched with the blanks that the formatter
# puts around them, so template brackets, '->' and '<<' are never taken for comparisons.
SWAPS = [(" < ", " <= "), (" <= ", " < "), (" > ", " >= "), (" >= ", " > "),
         (" == ", " != "), (" != ", " == "), (" && ", " || "), (r" \|\| ", " && "),
         (r"\+ 1\b", "- 1"), (r"- 1\b", "+ 1"), (r"\btrue\b", "false"), (r"\bfalse\b", "true")]

def code_part(line):
    """The line with string and character literals blanked and any // comment cut off."""
    masked = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + " " * (len(m.group()) - 2) + '"', line)
    masked = re.sub(r"'(\\.|[^'\\])'", "' '", masked)
    return masked.split("//", 1)[0]

sites = []
for path in sorted((src / "units").rglob("*.[ch]pp")):
    lines = path.read_text().splitlines(keepends=True)
    in_comment = False
    for number, line in enumerate(lines, 1):
        stripped = line.strip()
        if in_comment or stripped.startswith("/*"):
            in_comment = "*/" not in stripped
            continue
        if stripped.startswith(("#", "*", "//")) or "assert(" in line or "static_assert" in line:
            continue  # release builds drop asserts: their faults could never be caught
        code = code_part(line)
        for pattern, replacement in SWAPS:
            for match in re.finditer(pattern, code):
                sites.append((path, number, match.start(), match.end(), replacement))

chosen = sorted(random.Random(seed).sample(sites, min(sample, len(sites))),
                key=lambda s: (str(s[0]), s[1], s[2]))
print(f"{len(sites)} places a fault can go in units/; seed {seed} draws {len(chosen)}.", flush=True)

equivalents = []
listed = pathlib.Path("scripts/mutants-equivalent.txt")
for entry in listed.read_text().splitlines() if listed.exists() else []:
    if entry.strip() and not entry.startswith("#"):
        prefix, pattern, why = (part.strip() for part in entry.split(" | ", 2))
        equivalents.append((prefix, re.compile(pattern), why))

def equivalent(where, original):
    return next((why for prefix, pattern, why in equivalents
                 if where.startswith(prefix) and pattern.search(original)), None)

caught, survived, broken, same = [], [], [], []
for index, (path, number, start, end, replacement) in enumerate(chosen, 1):
    original = path.read_text()
    lines = original.splitlines(keepends=True)
    line = lines[number - 1]
    lines[number - 1] = line[:start] + replacement + line[end:]
    where = f"{path.relative_to(src)}:{number}"
    change = f"{line[start:end].strip()!r} -> {replacement.strip()!r}"
    path.write_text("".join(lines))
    try:
        built = subprocess.run(["cmake", "--build", str(work / "build"), "-j2"],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0
        if not built:
            broken.append(where)
            verdict = "does not compile"
        else:
            stop = [] if which else ["--stop-on-failure", "-Q"]
            run = subprocess.run(["ctest", "--test-dir", str(work / "build"), "-j2", "--timeout", "60",
                                  *stop, *ctest_args], capture_output=True, text=True)
            if run.returncode != 0:
                caught.append(where)
                verdict = "caught"
                if which:
                    failed = re.findall(r"^\s*\d+ - (\S+) \(", run.stdout, re.M)
                    verdict += " by " + ", ".join(failed)
            elif why := equivalent(where, lines[number - 1]):
                same.append(f"{where}  {change}  {why}")
                verdict = "survived, equivalent"
            else:
                survived.append(f"{where}  {change}  {lines[number - 1].strip()}")
                verdict = "SURVIVED"
    finally:
        path.write_text(original)
    print(f"[{index}/{len(chosen)}] {where} {change}: {verdict}", flush=True)

compiled = len(caught) + len(survived)
share = 100.0 * len(caught) / compiled if compiled else 0.0
print(f"\nSeed {seed}, sample {len(chosen)}: {compiled} compiled and could change behaviour, "
      f"{len(caught)} caught ({share:.1f} %), {len(survived)} survived; {len(same)} equivalent "
      f"(scripts/mutants-equivalent.txt), {len(broken)} did not compile.")
for title, listing in (("Survivors:", survived), ("Equivalent:", same)):
    if listing:
        print(title)
        for line in listing:
            print("  " + line)
PY
