#!/usr/bin/env bash
# 10,000 calls of the manager's calculateconversion('mile', 'furlong', 1): a loop in
# GNU Octave through the twzo_units package, beside the same statement run by zo_units
# (which has no loops: a script of it ten times 10,000 times over, as the kernel counts
# CPU time in ticks). Prints the CPU time per call of each, the median of 5 runs.
#   bench/octave_loop.sh [BUILD_DIR]     default build/release, after scripts/test.sh
# The package must be installed in the build tree's test prefix (ctest -R octave.install).
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/release}
calls=10000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

setup="um = UnitManager; f = um.registerunit('furlong', 'meter', 201.168);"
lines=$((calls * 10))
{ echo "$setup"; for ((i = 0; i < lines; ++i)); do echo "x = um.calculateconversion('mile', 'furlong', 1);"; done; } >"$work/loop.cvx"
echo "$setup" >"$work/setup.cvx"

# CPU seconds (user + system) of one command, from the kernel's accounting of the child.
cpu() {
  python3 -c 'import resource, subprocess, sys
subprocess.run(sys.argv[1:], check=True, stdout=subprocess.DEVNULL)
r = resource.getrusage(resource.RUSAGE_CHILDREN)
print(r.ru_utime + r.ru_stime)' "$@"
}

median() { sort -g | sed -n 3p; }

shell_us=$(for run in 1 2 3 4 5; do
  echo "$(cpu "$build/shell/zo_units" "$work/loop.cvx") $(cpu "$build/shell/zo_units" "$work/setup.cvx")" |
    awk -v n=$lines '{ printf "%.2f\n", ($1 - $2) / n * 1e6 }'
done | median)

octave_us=$(for run in 1 2 3 4 5; do
  octave-cli --quiet --no-history --norc --eval "
    pkg local_list $build/tests/octave/prefix/octave_packages; pkg global_list $work/none; pkg load twzo_units; $setup
    x = um.calculateconversion ('mile', 'furlong', 1);
    t = cputime (); for k = 1:$calls, x = um.calculateconversion ('mile', 'furlong', 1); end
    printf ('%.2f\n', (cputime () - t) / $calls * 1e6);" </dev/null
done | median)

gateway_us=$(for run in 1 2 3 4 5; do
  octave-cli --quiet --no-history --norc --eval "
    pkg local_list $build/tests/octave/prefix/octave_packages; pkg global_list $work/none; pkg load twzo_units; $setup
    x = __twzo_units__ ('invoke', 'calculateconversion', 1, um, 'mile', 'furlong', 1);
    t = cputime (); for k = 1:$calls, x = __twzo_units__ ('invoke', 'calculateconversion', 1, um, 'mile', 'furlong', 1); end
    printf ('%.2f\n', (cputime () - t) / $calls * 1e6);" </dev/null
done | median)

# Octave's own cost of calling a classdef method that does nothing, for scale.
printf 'classdef Nothing\n methods\n  function varargout = m(obj, varargin)\n   varargout = {1};\n  end\n end\nend\n' >"$work/Nothing.m"
empty_us=$(for run in 1 2 3 4 5; do
  octave-cli --quiet --no-history --norc --eval "
    addpath $work; n = Nothing; x = n.m ('mile', 'furlong', 1);
    t = cputime (); for k = 1:$calls, x = n.m ('mile', 'furlong', 1); end
    printf ('%.2f\n', (cputime () - t) / $calls * 1e6);" </dev/null
done | median)

echo "CPU time per call, median of 5 runs of $calls calls:"
echo "  zo_units, one statement per call (parse, evaluate, host call):  $shell_us us"
echo "  Octave, um.calculateconversion(...) in a for loop:             $octave_us us"
echo "  Octave, the gateway __twzo_units__ called directly:            $gateway_us us"
echo "  Octave, a classdef method that does nothing (for scale):        $empty_us us"
