#!/usr/bin/env bash
# The shared library shows the functions of its public headers and nothing else.
#
#   exported_symbols_test.sh LIBRARY [NM]
set -euo pipefail
expected=$(dirname "$0")/exported_symbols.txt
shown=$("${2:-nm}" --dynamic --defined-only "$1" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }')
diff <(LC_ALL=C sort "$expected") <(LC_ALL=C sort <<<"$shown") || { echo "< expected, > shown by $1: is $expected up to date?"; exit 1; }
