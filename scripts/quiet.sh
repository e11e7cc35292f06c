# shellcheck shell=bash
# Commands without their chatter. To be sourced: source scripts/quiet.sh

# quietly COMMAND...: shows the command's output only if it fails. Returns the command's exit status.
# In a function that is run this way `set -e` has no effect: connect its commands with &&.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || status=$?
  if ((status != 0)); then
    cat "$log"
  fi
  rm "$log"
  return "$status"
}
