#!/usr/bin/env bash
# Installs the built library into an empty prefix, moves that, and builds a C and a C++ program against it, once
# through pkg-config and once through CMake. Each converts the document; what comes out is looked at, and is what
# the built command line writes.
#
#   consumers_test.sh BUILD_DIR C_COMPILER CXX_COMPILER FLAGS DOCUMENT
set -euo pipefail
build=$1 cc=$2 cxx=$3 flags=$4
programs=$(cd "$(dirname "$0")/consumer" && pwd)
examples=$(cd "$(dirname "$0")/../../examples" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$5" "$work/sample.doc"
chmod u+w "$work/sample.doc"

fail() {
  echo "$1"
  exit 1
}

DESTDIR='' cmake --install "$build" --prefix "$work/installed" >"$work/install.log" || fail "$(cat "$work/install.log")"
prefix=$work/moved
mv "$work/installed" "$prefix"
pc=$(find "$prefix" -name pagerex.pc)
libdir=$(dirname "$(dirname "$pc")")
export PKG_CONFIG_PATH=${pc%/*}

# convert FOLDER PROGRAM [OPTION...]: the sample, to a folder of its own.
convert() {
  local folder=$work/$1
  shift
  mkdir "$folder"
  "$@" "$work/sample.doc" "$folder/out.html" >"$folder.log" || fail "$1: exit code $?"
}

# An index, and whole pages of text with a picture.
looks_right() {
  local files=$work/$1/out.files page
  [ -s "$work/$1/out.html" ] || fail "$1: no main HTML file"
  for page in "$files"/*.htm; do
    [ "$(tail -c 7 "$page")" = '</html>' ] || fail "$page is not whole"
  done
  grep -q 'A Sampler' "$files/1.htm" || fail "$1: the title is not on the first page"
  grep -q 'The end\.' "$page" || fail "$1: the last paragraph is not on the last page"
  [ "$(head -c 4 "$files/image001.png" | tail -c 3)" = PNG ] || fail "$1: no picture"
}

# in_memory WAY PROGRAM: as many bytes as the command line writes of a safe page, and what the file is for others.
in_memory() {
  local said
  said=$(LD_LIBRARY_PATH=$libdir "$2" normal <"$work/sample.doc" 2>&1) || fail "$2: exit code $?: $said"
  grep -qx 'document.files/1.htm text/html; charset=utf-8' <<<"$said" || fail "$2: no page: $said"
  grep -qx "The document was converted. $memory_files files, $memory_bytes bytes" <<<"$said" ||
    fail "$2: not $memory_files files and $memory_bytes bytes: $said"
  said=$(echo '{\rtf1 }' | LD_LIBRARY_PATH=$libdir "$2") && fail "$2: converted what is no document"
  grep -q 'This is a Rich Text document' <<<"$said" || fail "$2: does not say what the file is: $said"
}

# use WAY C_PROGRAM CXX_PROGRAM
use() {
  LD_LIBRARY_PATH=$libdir convert "$1-c" "$2"
  LD_LIBRARY_PATH=$libdir convert "$1-cpp" "$3"
  diff -r "$work/$1-c" "$work/mulpages" || fail "$2: not what the command line writes"
  diff -r "$work/$1-cpp" "$work/phone" || fail "$3: not what the command line writes"
  [ "$(wc -l <"$work/$1-c.log")" -eq "$(find "$work/$1-c/out.files" -name '[0-9]*.htm' | wc -l)" ] ||
    fail "$2: not told of each page"
}

convert mulpages "$build/pagerex" --view mulpages --pagesize 2000
convert phone "$build/pagerex" --view phone --pagesize 2000
mkdir "$work/memory"
"$build/pagerex" --safe "$work/sample.doc" "$work/memory/document.html" || fail "--safe: exit code $?"
memory_files=$(find "$work/memory" -type f | wc -l)
memory_bytes=$(find "$work/memory" -type f -printf '%s\n' | awk '{ sum += $1 } END { print sum }')
looks_right mulpages
looks_right phone

# Through pkg-config. FLAGS are words to the compiler.
# shellcheck disable=SC2046,SC2086
"$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror "$programs/use.c" -o "$work/use_c" $flags $(pkg-config --cflags --libs pagerex)
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++11 -Wall -Wextra -Wpedantic -Werror "$programs/use.cpp" -o "$work/use_cpp" $flags $(pkg-config --cflags --libs pagerex)
# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Wpedantic -Werror "$programs/memory.c" -o "$work/memory_c" $flags $(pkg-config --cflags --libs pagerex)
# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Wpedantic -Wshadow -Werror "$examples/word_count/word_count.c" -o "$work/word_count" $flags $(pkg-config --cflags --libs pagerex)
# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Wpedantic -Wshadow -Werror "$examples/picture/picture.c" -o "$work/picture" $flags $(pkg-config --cflags --libs pagerex)
# The header by itself, in both languages.
for language in 'c -std=c99' 'c++ -std=c++11'; do
  # shellcheck disable=SC2046,SC2086
  echo '#include <pagerex/walk.h>' | "$cc" -x $language -Wall -Wextra -Wpedantic -Werror -fsyntax-only $(pkg-config --cflags pagerex) -
done
use pkg-config "$work/use_c" "$work/use_cpp"
in_memory pkg-config "$work/memory_c"
counted=$(LD_LIBRARY_PATH=$libdir "$work/word_count" "$work/sample.doc") || fail "word_count: exit code $?"
grep -qE '^[1-9][0-9]+ words, [1-9][0-9]* headings, ' <<<"$counted" || fail "word_count: $counted"
picture=$work/mulpages/out.files/image001.png
LD_LIBRARY_PATH=$libdir "$work/picture" "$picture" "$work/picture_of" >/dev/null || fail "picture: exit code $?"
cmp "$picture" "$work/picture_of.png" || fail "picture: not the same PNG"
echo "pkg-config: $(pkg-config --modversion pagerex)"

# Through CMake.
cmake -G Ninja -S "$programs" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$cc" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" >"$work/cmake.log" &&
  cmake --build "$work/cmake" >>"$work/cmake.log" || fail "$(cat "$work/cmake.log")"
use CMake "$work/cmake/use_c" "$work/cmake/use_cpp"
in_memory CMake "$work/cmake/memory"
echo "CMake: built and run"

convert installed "$prefix/bin/pagerex" --view phone --pagesize 2000
diff -r "$work/installed" "$work/phone" || fail "the installed command line writes something else"
"$prefix/bin/pagerex" --version

# What stands beside the command line.
for file in man/man1/pagerex.1 bash-completion/completions/pagerex zsh/site-functions/_pagerex \
  fish/vendor_completions.d/pagerex.fish; do
  grep -q -e resume "$prefix/share/$file" || fail "share/$file is not what it should be"
done
