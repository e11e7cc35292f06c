#!/usr/bin/env bash
# Checks that the API reference knows every command: documentation_test.sh COMMAND_TABLE API_REFERENCE
set -euo pipefail
table=$1
reference=$2
failures=0
count=0

while read -r command; do
  count=$((count + 1))
  if ! grep -qF -- "| \`$command\`" "$reference" && ! grep -qF -- ", \`$command\`" "$reference"; then
    echo "not in the API reference: $command"
    failures=$((failures + 1))
  fi
done < <(grep -oE 'Row<[A-Za-z0-9]+>\("[A-Za-z0-9]+"' "$table" | cut -d '"' -f 2)

if ((count < 68)); then
  echo "only $count commands found in $table"
  failures=$((failures + 1))
fi
exit $((failures > 0))
