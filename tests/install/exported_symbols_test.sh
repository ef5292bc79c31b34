#!/usr/bin/env bash
# The shared library shows the functions of its public headers and nothing else; with a pattern, nothing that it
# matches either.
#
#   exported_symbols_test.sh LIBRARY [NM [LEFT_OUT]]
set -euo pipefail
expected=$(dirname "$0")/exported_symbols.txt
shown=$("${2:-nm}" --dynamic --defined-only "$1" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }')
diff <(grep -vE "${3:-^$}" "$expected" | LC_ALL=C sort) <(LC_ALL=C sort <<<"$shown") ||
  { echo "< expected, > shown by $1: is $expected up to date?"; exit 1; }
