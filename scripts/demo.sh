#!/usr/bin/env bash
# Builds the release flavour and runs the main job.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DTW_BUILD_BENCH=ON
cmake --build build/release -j "$(nproc)"
build/release/examples/list_quantities
