#!/usr/bin/env bash
# Builds the GNU Octave package twzo_units (release flavour) and installs it with pkg
# install: for the user, or for everyone when run as root; into $OCTAVE_PKG_PREFIX
# when that is set. Installs Octave first when it is missing. Then: pkg load twzo_units
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh --no-recommends octave liboctave-dev
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DTW_BUILD_OCTAVE=ON -DTW_BUILD_TESTS=OFF
cmake --build build/release -j "$(nproc)" --target octave_package
cmake --install build/release --component octave
