#!/usr/bin/env bash
# Builds the release flavour of what the main job runs (the library, the host and the shell,
# nothing else) and runs it: the shell zo_units through the demo script. The demo shows
# errors on purpose, so it runs with --keep-going.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DTW_BUILD_TESTS=OFF
cmake --build build/release --target zo_units -j "$(nproc)"
build/release/shell/zo_units --keep-going --echo examples/demo.cvx
