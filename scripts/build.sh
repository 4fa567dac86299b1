#!/bin/bash
# build.sh PRESET [TARGET...]: configures a preset and builds it, with ccache where that is installed.
set -eu
cd "$(dirname "$0")/.."
preset=$1
shift
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
cmake --preset "$preset"
cmake --build "build/$preset" ${CMAKE_BUILD_PARALLEL_LEVEL:+-j "$CMAKE_BUILD_PARALLEL_LEVEL"} ${*:+--target "$@"}
