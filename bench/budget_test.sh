#!/usr/bin/env bash
# Compares the cost of three requests with their limits: budget_test.sh MEASURE BUILD FOLDER, where
# MEASURE is the program that counts, BUILD a name from the table below, and FOLDER contains the
# programs of that build. Instructions and system calls do not depend on the load of the machine.
set -euo pipefail
measure=$1
build=$2
folder=$3
failures=0

# Build, request, instructions over the floor (a tenth more than measured, for other compilers),
# system calls.
limits() {
  cat <<'END'
release HeartbeatConfirmation 13200 24
release GetCamStatus          53900 38
release SetStreamingBitrate   18800 44
small   HeartbeatConfirmation 17200 13
small   GetCamStatus          63600 27
small   SetStreamingBitrate   27500 33
END
}

counts=$("$measure" counts "$folder")
echo "$counts"

# expect_at_most REQUEST INSTRUCTIONS SYSTEM_CALLS: the limits.
expect_at_most() {
  local over calls
  read -r over calls < <(awk -v title="$1" '$1 == title {print $3, $4}' <<<"$counts")
  if ((over > $2 || calls > $3)); then
    echo "over budget: $1 has $over instructions over the floor (at most $2), $calls system calls (at most $3)"
    failures=$((failures + 1))
  fi
}

compared=0
while read -r name request instructions calls; do
  if [[ $name == "$build" ]]; then
    expect_at_most "$request" "$instructions" "$calls"
    compared=$((compared + 1))
  fi
done < <(limits)

((compared > 0 && failures == 0))
