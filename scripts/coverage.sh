#!/bin/bash
# Runs the tests on the coverage preset and prints the share of lines reached, by room. Needs lcov.
set -eu
cd "$(dirname "$0")/.."
scripts/build.sh coverage
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --output-on-failure
lcov -q -c -d build/coverage --no-external -b "$PWD" -o build/coverage/all.info
for room in src/*/; do
  lcov -q -e build/coverage/all.info "$PWD/$room*" -o build/coverage/room.info 2>/dev/null || continue
  printf '%-16s %s\n' "$room" "$(lcov --summary build/coverage/room.info 2>&1 | grep lines)"
done
