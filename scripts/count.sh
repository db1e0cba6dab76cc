#!/usr/bin/env bash
# Lines of test code against lines of code, counted as the README's section on testing says:
# the lines of every file that git knows or would add (ignored files aside) with a source
# ending (.c .cc .cpp .cxx .h .hh .hpp .txt .cmake .md .cvx .sh .py, CMakeLists.txt, run),
# all of tests/ (fuzz harnesses and Python tests included) against units/ host/ shell/
# octave/ python/. Expected outputs (.out), seed corpora and Octave's .m and .tst files count
# on neither side. Then the narrower measure the band is set in: unit tests and transcripts
# against units/ host/ shell/.
set -euo pipefail
cd "$(dirname "$0")/.."

# The files with a source ending under the folders given.
sources() {
  git ls-files -co --exclude-standard -- "$@" |
    grep -E '\.(c|cc|cpp|cxx|h|hh|hpp|txt|cmake|md|cvx|sh|py)$|(^|/)(run|CMakeLists\.txt)$'
}
lines() { tr '\n' '\0' | xargs -0 cat | wc -l; }
share() { awk "BEGIN { printf \"%.2f\", $1 / $2 }"; }
code=$(sources units host shell octave python | lines)
tests=$(sources tests | lines)
echo "code (units/ host/ shell/ octave/ python/): $code lines"
echo "tests (tests/): $tests lines, $(share "$tests" "$code") of the code"
# The band's own measure: the unit tests (GoogleTest sources, fuzz harnesses and compile
# checks aside) and the shell's transcripts, against the library, the host and the shell.
core=$(sources units host shell | lines)
unit=$(sources tests | grep -E '\.(cpp|hpp|cvx)$' | grep -v -E '^tests/(fuzz|compile)/' | lines)
echo "unit tests and transcripts: $unit lines against $core of units/ host/ shell/, $(share "$unit" "$core")"
