#!/usr/bin/env bash
# The table "To find a rule, to add one" of docs/architecture.md names files, functions and tests that exist.
# Prints what does not.
#
#   rule_table_test.sh SOURCE_DIR
set -euo pipefail
cd "$1"

rows=0
wrong=0
complain() {
  echo "docs/architecture.md: $1"
  wrong=1
}

# Columns: what is seen | file | function | test. A name stands in backquotes.
while IFS='|' read -r _ seen file function test _; do
  file=${file//[\` ]/} function=${function//[\` ]/} test=${test//[\` ]/}
  rows=$((rows + 1))
  # Folders may have files of the same name.
  paths=$(find -L src -name "$file")
  if [[ -z $file || -z $paths ]]; then
    complain "no file $file (${seen})"
  elif ! xargs grep -qw -- "$function" <<<"$paths"; then
    complain "no $function in $file (${seen})"
  fi
  grep -rqE "^(TEST|TEST_F|TEST_P|TYPED_TEST)\($test," tests || complain "no test $test (${seen})"
done < <(sed -n '/^## To find a rule/,/^## /p' docs/architecture.md | grep '^| .*`')

[[ $rows -ge 25 ]] || complain "the table has but $rows rows"
exit $wrong
