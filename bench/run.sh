#!/bin/bash
# Builds the benchmarks in release, runs them and prints one table: what was aimed at, what was reached. The medians of
# five runs; ratios are within one run, since machines differ. All results stay in build/release/bench.json.
#   --short         one run each, for a machine that only checks that every row is there
#   --instructions  also the instructions a box, an evaluation and a node take, by valgrind
#   --save          also writes the table into docs/performance.md
set -eu
cd "$(dirname "$0")/.."
scripts/setup.sh bench
cmake --preset release -DOZ_BUILD_BENCHMARKS=ON >/dev/null
cmake --build build/release --target gridBench routesBench fieldBench mathBench pickBench readerBench
exec python3 bench/table.py build/release "$@"
