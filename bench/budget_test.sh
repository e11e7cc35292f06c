#!/usr/bin/env bash
# Compares the cost of three requests with their limits: budget_test.sh FOLDER, where FOLDER contains
# the built programs. Instructions and system calls do not depend on the load of the machine. The
# limits leave a tenth for other compilers.
set -euo pipefail
folder=$1
failures=0

counts=$("$folder/measure" counts "$folder")
echo "$counts"

# expect_at_most REQUEST INSTRUCTIONS SYSTEM_CALLS: the limits; instructions are those over the floor.
expect_at_most() {
  local over calls
  read -r over calls < <(awk -v title="$1" '$1 == title {print $3, $4}' <<<"$counts")
  if ((over > $2 || calls > $3)); then
    echo "over budget: $1 has $over instructions over the floor (at most $2), $calls system calls (at most $3)"
    failures=$((failures + 1))
  fi
}

expect_at_most HeartbeatConfirmation 18200 25
expect_at_most GetCamStatus 61400 39
expect_at_most SetStreamingBitrate 26400 45

exit $((failures > 0))
