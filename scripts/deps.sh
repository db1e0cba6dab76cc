#!/usr/bin/env bash
# Installs the Debian packages that a command needs, when any of them is missing.
# Usage: scripts/deps.sh [--no-recommends] [--tests] [--bench] [extra-package ...]
#   (nothing)  what the library, the host and the shell need to build (scripts/demo.sh)
#   --tests    and what the tests need: GoogleTest, the Python package and its tests
#   --bench    and what the benchmarks need: Google Benchmark, UDUNITS-2
set -euo pipefail

packages=(cmake make g++ pkg-config libboost-dev
          # the shell's line editing at a terminal
          libedit-dev)
recommends=()
while (($# > 0)); do
  case "$1" in
    # Octave recommends a hundred packages more than it needs.
    --no-recommends) recommends=(--no-install-recommends) ;;
    # the Python package, for Debian's own interpreter /usr/bin/python3
    --tests) packages+=(libgtest-dev python3-dev pybind11-dev python3-pybind11 python3-numpy
                        python3-pytest) ;;
    --bench) packages+=(libbenchmark-dev libudunits2-dev) ;;
    *) break ;;
  esac
  shift
done
packages+=("$@")
missing=()
for package in "${packages[@]}"; do
  dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done
if ((${#missing[@]} > 0)); then
  sudo=""
  if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
  echo "Installing: ${missing[*]}"
  $sudo apt-get update
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=900 install -y \
    "${recommends[@]}" "${missing[@]}"
fi
