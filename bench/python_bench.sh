#!/usr/bin/env bash
# Builds the Python package (release flavour) and runs bench/python_bench.py with Debian's
# interpreter, pint installed beside it for the comparison.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh --tests python3-pint
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build/release --target twzo_units_python -j "$(nproc)"
PYTHONPATH=build/release/python /usr/bin/python3 bench/python_bench.py
