#!/usr/bin/env bash
# Installs a build into a fresh temporary prefix, then builds and runs the consumer
# example against it twice: with the CMake package and with pkg-config. Nothing but
# the installed prefix is on the consumer's include path.
# Usage: scripts/check-install.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:?usage: scripts/check-install.sh BUILD_DIR}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
cmake -S examples/consumer -B "$prefix/consumer-build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$prefix/consumer-build" >/dev/null
"$prefix/consumer-build/consumer"

# shellcheck disable=SC2046
g++ -std=c++17 examples/consumer/consumer.cpp -o "$prefix/consumer-pkg-config" \
  $(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs twzo_units)
"$prefix/consumer-pkg-config" >/dev/null
echo "install check: consumer built and ran against $prefix (CMake package and pkg-config)"

# The Python package, when the build has it, imports from the prefix alone.
package=$(find "$prefix" -path '*/twzo_units/__init__.py' -printf '%h\n' -quit)
if [ -n "$package" ]; then
  (cd "$prefix" && PYTHONPATH=$(dirname "$package") /usr/bin/python3 -c \
    "import twzo_units as u; assert abs(u.convert(1, 'mile', 'meter') - 1609.344) < 1e-9")
  echo "install check: the Python package imported and converted from $(dirname "$package")"
fi
