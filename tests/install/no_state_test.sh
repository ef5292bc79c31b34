#!/usr/bin/env bash
# Nothing that changes is static: any number of conversions run side by side. Prints each variable of the library's
# objects that could change and is not one of the few that must.
#
#   no_state_test.sh STATIC_LIBRARY [OBJDUMP]
set -euo pipefail
library=$1
objdump=${2:-objdump}

# What the exported calls owe to a process or to a thread, each guarded; and constants that the compiler puts among
# the variables.
allowed='
settingLocale   one thread at a time sets the locale of the process
processScripts  a process writes each function of the script of the shapes once
outputError     the thread'"'"'s last conversion, for PageRexOutputError
shared          the number formats of the host, behind a lock
forgetsAtExit   their end with the process
kSprms          constant
'

found=$("$objdump" -tC "$library" | awk '
  / O \.(data|bss|tdata|tbss)/ && !/\.data\.rel\.ro/ && !/DW\.ref\./ { sub(/.*[0-9a-f]{8,16} (\.hidden )?/, ""); print }' | sort -u)
[ -n "$found" ] || { echo "no variable found at all: is $library the library?"; exit 1; }

wrong=0
while read -r variable; do
  name=${variable##*::}
  grep -q "^$name " <<<"$allowed" && continue
  echo "may change: $variable"
  wrong=1
done <<<"$found"
exit $wrong
