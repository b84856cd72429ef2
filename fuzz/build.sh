#!/bin/sh
# Builds the formatter fuzzer with clang into $1 (default: build-fuzz beside
# this folder's parent, i.e. <repo>/build-fuzz). Installs nothing.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
out=${1:-"$here/../build-fuzz"}
CXX=${CXX:-clang++} cmake -S "$here" -B "$out" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$out" -j2
