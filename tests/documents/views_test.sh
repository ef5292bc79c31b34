#!/usr/bin/env bash
# The four views write of the real documents the bytes that they always wrote. Skipped (77) where the check of
# that, which is no part of the project, does not lie beside it.
#
#   views_test.sh SOURCE_DIR COMMAND_LINE
set -euo pipefail
check=$1/../shared/check/views
[ -x "$check" ] || { echo "no real documents beside this project"; exit 77; }
exec "$check" --cli "$2"
