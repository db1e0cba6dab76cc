#!/usr/bin/env bash
# Installs the Debian packages that the build needs, when any of them is missing.
# Usage: scripts/deps.sh [--no-recommends] [extra-package ...]
set -euo pipefail

# Octave recommends a hundred packages more than it needs.
recommends=()
if [ "${1:-}" = "--no-recommends" ]; then
  recommends=(--no-install-recommends)
  shift
fi
packages=(cmake make g++ pkg-config libboost-dev libgtest-dev libbenchmark-dev libudunits2-dev
          # the shell's line editing at a terminal
          libedit-dev
          # the Python package, for Debian's own interpreter /usr/bin/python3
          python3-dev pybind11-dev python3-pybind11 python3-numpy python3-pytest
          "$@")
missing=()
for package in "${packages[@]}"; do
  dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done
if ((${#missing[@]} > 0)); then
  sudo=""
  if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
  echo "Installing: ${missing[*]}"
  $sudo apt-get update
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y "${recommends[@]}" "${missing[@]}"
fi
