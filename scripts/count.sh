#!/usr/bin/env bash
# Lines of test code against lines of code, counted as the README's section on testing says:
# the lines of every file that git knows or would add (ignored files aside) with a source
# ending (.c .cc .cpp .cxx .h .hh .hpp .txt .cmake .md .cvx .sh .py, CMakeLists.txt, run),
# all of tests/ (fuzz harnesses and Python tests included) against units/ host/ shell/
# octave/ python/. Expected outputs (.out), seed corpora and Octave's .m and .tst files count
# on neither side.
set -euo pipefail
cd "$(dirname "$0")/.."

lines() {
  git ls-files -co --exclude-standard -- "$@" |
    grep -E '\.(c|cc|cpp|cxx|h|hh|hpp|txt|cmake|md|cvx|sh|py)$|(^|/)(run|CMakeLists\.txt)$' |
    tr '\n' '\0' | xargs -0 cat | wc -l
}
code=$(lines units host shell octave python)
tests=$(lines tests)
echo "code (units/ host/ shell/ octave/ python/): $code lines"
echo "tests (tests/): $tests lines, $(awk "BEGIN { printf \"%.2f\", $tests / $code }") of the code"
