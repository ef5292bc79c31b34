#!/usr/bin/env bash
# Installs the built library into an empty prefix, moves that, and builds and runs a C and a C++ program against
# it, once through pkg-config and once through CMake.
#
#   consumers_test.sh BUILD_DIR C_COMPILER CXX_COMPILER FLAGS
set -euo pipefail
build=$1 cc=$2 cxx=$3 flags=$4
programs=$(cd "$(dirname "$0")/consumer" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

DESTDIR='' cmake --install "$build" --prefix "$work/installed" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
prefix=$work/moved
mv "$work/installed" "$prefix"
pc=$(find "$prefix" -name pagerex.pc)
libdir=$(dirname "$(dirname "$pc")")
export PKG_CONFIG_PATH=${pc%/*} LD_LIBRARY_PATH=$libdir

run() {
  "$1" || { echo "$1: exit code $?"; exit 1; }
}

# Through pkg-config. FLAGS are words to the compiler.
# shellcheck disable=SC2046,SC2086
"$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror "$programs/use.c" -o "$work/use_c" $flags $(pkg-config --cflags --libs pagerex)
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++11 -Wall -Wextra -Wpedantic -Werror "$programs/use.cpp" -o "$work/use_cpp" $flags $(pkg-config --cflags --libs pagerex)
run "$work/use_c"
run "$work/use_cpp"
echo "pkg-config: $(pkg-config --modversion pagerex)"

# Through CMake.
cmake -G Ninja -S "$programs" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$cc" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" >"$work/cmake.log" &&
  cmake --build "$work/cmake" >>"$work/cmake.log" || { cat "$work/cmake.log"; exit 1; }
run "$work/cmake/use_c"
run "$work/cmake/use_cpp"
echo "CMake: built and run"

"$prefix/bin/pagerex" --version
