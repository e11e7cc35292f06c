#!/usr/bin/env bash
# Holds what three requests cost against a limit: budget_test.sh FOLDER, where FOLDER holds the built
# programs. Instructions and system calls do not depend on the machine's load, so a limit is a limit;
# there is a tenth of room for another compiler.
set -euo pipefail
folder=$1
failures=0

counts=$("$folder/measure" counts "$folder")
echo "$counts"

# hold REQUEST INSTRUCTIONS SYSTEM_CALLS: at most so many, instructions over the floor.
hold() {
  local over calls
  read -r over calls < <(awk -v title="$1" '$1 == title {print $3, $4}' <<<"$counts")
  if ((over > $2 || calls > $3)); then
    echo "over budget: $1 has $over instructions over the floor (at most $2), $calls system calls (at most $3)"
    failures=$((failures + 1))
  fi
}

hold HeartbeatConfirmation 18200 25
hold GetCamStatus 61400 39
hold SetStreamingBitrate 26400 45

exit $((failures > 0))
