#!/bin/bash
# consume.sh [BUILD_DIR]: installs a build into a scratch prefix, then builds and runs a program against it, once as a CMake
# package and once through pkg-config.
set -eu
cd "$(dirname "$0")/.."
build=${1:-build/release}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Says nothing unless it fails.
quietly() { "$@" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }; }

quietly cmake --install "$build" --prefix "$scratch/prefix"
libdir=$(dirname "$(find "$scratch/prefix" -name libOzScene3D.so.1)")

quietly cmake -S tests/consumer -B "$scratch/build" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix"
quietly cmake --build "$scratch/build"
"$scratch/build/consumer"
echo "find_package works"

export PKG_CONFIG_PATH="$libdir/pkgconfig"
# Unquoted: the flags are words.
${CXX:-g++} -std=c++17 $(pkg-config --cflags ozscene3d) tests/consumer/consumer.cpp -o "$scratch/consumer" \
  $(pkg-config --libs ozscene3d) -Wl,-rpath,"$libdir"
"$scratch/consumer"
echo "pkg-config works"

if [ -e "$scratch/prefix/bin/ozview" ]; then
  "$scratch/prefix/bin/ozview" --version
fi

quietly cmake -S . -B "$scratch/untested" -G Ninja -DBUILD_TESTING=OFF -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON
echo "BUILD_TESTING=OFF asks for no GoogleTest"
