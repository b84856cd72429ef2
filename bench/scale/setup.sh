#!/bin/sh
# Installs what the scale benchmark compares against (Qt 5's Core and its
# SQLite driver, from Debian; run as root) and builds the benchmarks in
# Release. Then run, from the repository's top folder:
#
#   build/bench/bench/scale/scale_bench 5 build/bench/cache
#
# Usage: bench/scale/setup.sh [build folder]   (default: build/bench)
set -eu
top=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-"$top/build/bench"}
apt-get install -y --no-install-recommends qtbase5-dev libqt5sql5-sqlite
cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DOXDM_BUILD_BENCH=ON
cmake --build "$build" -j2 --target scale_bench buffered_ops_bench buffered_bench
