#!/usr/bin/env bash
# Includes point one way: each folder of src/ includes only itself and those below it. Prints what does not.
#
#   include_order_test.sh SOURCE_DIR
set -euo pipefail
cd "$1/src"

# Folder, and what it may include beside itself.
order='
base
storage base
numformat base pagerex
wordreader base storage
drawing base storage wordreader
story base storage wordreader numformat
objectwriter base storage wordreader drawing story pagerex
htmlwriter base storage wordreader drawing story objectwriter pagerex
entry base storage wordreader drawing story objectwriter htmlwriter pagerex
flow base storage wordreader drawing story pagerex
pictures base
formats base storage wordreader flow pictures pagerex
convert base storage wordreader drawing story flow objectwriter htmlwriter entry pictures formats pagerex
'

wrong=0
for folder in */; do
  folder=${folder%/}
  allowed=$(grep -E "^$folder( |$)" <<<"$order") || { echo "src/$folder: not known to this test"; exit 1; }
  # Includes of the project name their folder; the system's never stand in quotes.
  while IFS=: read -r file line text; do
    [[ $text =~ \"([^\"/]*) ]] && included=${BASH_REMATCH[1]}
    [[ " $allowed " == *" $included "* ]] && continue
    echo "src/$file:$line: $folder must not include $included:$text"
    wrong=1
  done < <(grep -nE '^ *# *include *"' "$folder"/*.h "$folder"/*.cpp "$folder"/*/*.h "$folder"/*/*.cpp 2>/dev/null || true)
done
exit $wrong
