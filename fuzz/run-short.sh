#!/bin/sh
# Builds the formatter fuzzer and runs it for 45 seconds from the seed corpus.
# Exits non-zero when the build fails or the fuzzer finds a crash, a leak or
# a hang (the crash input is left in the build folder). Installs nothing.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
out=${FUZZ_BUILD_DIR:-"$here/../build-fuzz"}
"$here/build.sh" "$out"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$here"/corpus/* "$work"/ 2>/dev/null || true
cd "$out"
./formatter_fuzzer -max_total_time=45 -timeout=10 -max_len=512 -print_final_stats=1 "$work"
