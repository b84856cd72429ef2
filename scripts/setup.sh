#!/usr/bin/env bash
# Sets up a Debian 12 machine for oxdm and builds it.
#
#   scripts/setup.sh            release build in build/release
#   scripts/setup.sh --sanitize build under AddressSanitizer and
#                               UndefinedBehaviorSanitizer in build/asan
#
# Installs the Debian packages the build needs when any is missing (as root,
# or through sudo), then configures and builds with CMake and Ninja.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(g++ cmake ninja-build pkg-config libgtest-dev libgmock-dev libbenchmark-dev
          libsqlite3-dev libtomlplusplus-dev libcairo2-dev libpango1.0-dev poppler-utils)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "${missing[@]}"
fi

build_dir=build/release
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [ "${1:-}" = "--sanitize" ]; then
  build_dir=build/asan
  options=(-DCMAKE_BUILD_TYPE=Debug -DOXDM_SANITIZE=ON)
fi

cmake -S . -B "$build_dir" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build_dir" -j "$(nproc)"
