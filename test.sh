#!/bin/bash
# Everything from nothing: installs what is missing, builds the release preset and runs all tests.
# ./test.sh [PRESET] takes another preset, such as asan.
set -eu
cd "$(dirname "$0")"
preset=${1:-release}
scripts/setup.sh
scripts/build.sh "$preset"
exec ctest --test-dir "build/$preset" --output-on-failure -j "${CTEST_PARALLEL_LEVEL:-$(nproc)}"
