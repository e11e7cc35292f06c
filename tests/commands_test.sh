#!/usr/bin/env bash
# Checks that everything that lists the commands agrees with the command table:
#
#   tests/commands_test.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
failures=0

# The rows of the command table.
table() {
  sed -nE 's/^ *Row<[A-Za-z0-9]+>\("([A-Za-z0-9]+)".*/\1/p' core/command_table.cpp
}

# In the API reference each command has a section of its own.
api_reference() {
  sed -nE 's/^### ([A-Za-z0-9]+)$/\1/p' docs/api.md
}

smoke_test() {
  bash -c 'source simulator/smoke_every_command.sh; every_command' | cut -d ' ' -f 1
}

# The first section of the dictionary.
fuzzing_dictionary() {
  sed -nE '/^# Commands/,/^$/s/^"([A-Za-z0-9]+)"$/\1/p' tests/fuzz/dictionary
}

# expect_all_commands NAME COMMAND...: what the command prints are the commands of the table.
expect_all_commands() {
  local name=$1 difference
  shift
  difference=$(comm -3 <(table | sort) <("$@" | sort -u) | sed 's/^\t/unknown command: /')
  if [[ -n $difference ]]; then
    printf '%s does not list the commands of the command table:\n%s\n' "$name" "$difference"
    failures=$((failures + 1))
  fi
}

if (($(table | wc -l) == 0)); then
  echo "found no rows in core/command_table.cpp"
  exit 1
fi
expect_all_commands "the API reference" api_reference
expect_all_commands "the smoke test" smoke_test
expect_all_commands "the dictionary of the fuzzers" fuzzing_dictionary
exit $((failures > 0))
