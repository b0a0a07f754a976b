#!/usr/bin/env bash
# Installs a built tree to a scratch prefix, then builds and runs the consumer example against
# it, once through the CMake package and once through pkg-config.
# Usage: scripts/check-install.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
"$scratch/prefix/bin/fnet" --help >/dev/null

pcdir=$(dirname "$(find "$scratch/prefix" -name foundation-network.pc | head -n 1)")
for mode in cmake pkg-config; do
    flags=(-DCMAKE_PREFIX_PATH="$scratch/prefix")
    [ "$mode" = pkg-config ] && flags=(-DUSE_PKG_CONFIG=ON)
    PKG_CONFIG_PATH="$pcdir" cmake -S examples/consumer -B "$scratch/consumer-$mode" -G Ninja \
        "${flags[@]}" >/dev/null
    cmake --build "$scratch/consumer-$mode" >/dev/null
    "$scratch/consumer-$mode/consumer"
    echo "check-install: consumer built and ran through $mode"
done
