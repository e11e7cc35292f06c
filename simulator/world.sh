#!/bin/bash
# The private world of the simulated camera: ./run starts this script as the first process of new
# mount and process namespaces. It lays private folders over those that the handler uses, starts
# the simulated camera and a web server, and ends when its standard input does. Everything in the
# namespaces ends with it, and what it mounted is gone.
#
#   world.sh serve PORT SESSION [OPTION...]    serves until the standard input ends; port 0 is a
#                                              free one
#   world.sh smoke SESSION [OPTION...]         posts every command on a free port
#
# The options are those of the simulated camera. CAMERA_SIMULATED_CAMERA is another build of it.
set -euo pipefail

# From here on, paths into the repository are relative: they stay good when a folder above it is
# covered by a private one.
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/namespaces.sh
source simulator/smoke.sh
export PATH="$PATH:/usr/sbin:/sbin"
export CAMERA_WEB_ADDRESS=${CAMERA_WEB_ADDRESS:-127.0.0.1}
export CAMERA_WEB_PID_FILE=/run/web_server.pid

main() {
  local mode=$1
  shift
  # Ends when no process is left at the other end of the standard input.
  cat <&0 >/dev/null &
  caller=$!
  private_folders
  private_devices
  case $mode in
    serve) serve "$@" ;;
    smoke) run_smoke "$@" ;;
  esac
}

private_folders() {
  mount -t tmpfs tmpfs /run
  mount -t tmpfs tmpfs /var/tmp
  mount -t tmpfs tmpfs /srv
  mkdir -p /var/tmp/lighttpd /srv/www/htdocs /srv/www/api /srv/www/cgi-bin
  cp build/release/camera_remote.cgi /srv/www/cgi-bin
  cp build/release/camera_tap /srv
  # Bound, not copied: a change to the page shows with the next reload.
  mount --no-canonicalize --bind ./web /srv/www/htdocs
  mount --no-canonicalize --bind ./api /srv/www/api
}

serve() {
  local port=$1 session=$2
  shift 2
  start_camera "$session" "$@"
  if ((port == 0)); then
    start_web_server_on_a_free_port
  else
    start_web_server "$port" || fail "the web server cannot use port $port"
  fi
  introduce "$port" "$session"
  watch_over "$camera" "$web_server" "$caller"
}

# introduce PORT SESSION: tells the user how to reach the camera.
introduce() {
  local host=${CAMERA_WEB_ADDRESS/#0.0.0.0/127.0.0.1} pid enter="nsenter" other
  host=${host/#"[::]"/"[::1]"}
  local url="http://$host:$1/cgi-bin/camera_remote.cgi"
  # The process id that the other side of this namespace sees: /proc is that of the outside.
  read -r pid _ </proc/self/stat
  if [[ $(</proc/self/uid_map) != *" 0 "*4294967295* ]]; then
    enter+=" --user --preserve-credentials"
  fi
  cat <<END
The simulated camera answers at  $url
Control interface                http://$host:$1/simulator/
Web remote                       http://$host:$1/
Session id                       $2
Into its private world           $enter --mount --target $pid
END
  if [[ $CAMERA_WEB_ADDRESS == 0.0.0.0 ]]; then
    for other in $(hostname --all-ip-addresses); do
      [[ $other == *:* ]] || echo "From other devices               http://$other:$1/"
    done
  fi
  cat <<END

From another terminal:

  curl --data '{"Request":{"Command":"GetSystemInfo","SessionID":"$2"}}' $url

Ctrl-C stops it.
END
}

run_smoke() {
  local port session=$1
  shift
  start_camera "$session" "$@"
  start_web_server_on_a_free_port
  smoke "$port" "$session" &
  watch_over "$camera" "$web_server" "$caller" $!
}

# Sets `port`.
start_web_server_on_a_free_port() {
  local attempt
  for attempt in {1..20}; do
    # Below the ports that the kernel hands out to clients.
    port=$((20000 + RANDOM % 12000))
    if start_web_server "$port" -e 'Address already in use'; then
      return 0
    fi
  done
  fail "no free port for the web server after $attempt attempts"
}

start_camera() {
  local session=$1
  shift
  "${CAMERA_SIMULATED_CAMERA:-build/release/simulated_camera}" --session "$session" "$@" &
  camera=$!
  wait_until camera_is_decided || true
  [[ -S /run/simulator/http.sock ]] || fail "the simulated camera does not start"
}

# The simulated camera makes this socket once everything else is there.
camera_is_decided() {
  [[ -S /run/simulator/http.sock ]] || ! kill -0 "$camera" 2>/dev/null
}

# start_web_server PORT [-e PATTERN]: fails if the port cannot be used. Shows what the web server
# reports, but not that it has started, nor what matches the pattern.
start_web_server() {
  local silenced=(-e 'server started' "${@:2}")
  rm -f "$CAMERA_WEB_PID_FILE"
  CAMERA_WEB_PORT=$1 lighttpd -D -f simulator/lighttpd.conf \
    2> >(grep --line-buffered --invert-match "${silenced[@]}" >&2) &
  web_server=$!
  wait_until web_server_is_decided && [[ -s $CAMERA_WEB_PID_FILE ]]
}

# The web server writes its process id once it listens.
web_server_is_decided() {
  [[ -s $CAMERA_WEB_PID_FILE ]] || ! kill -0 "$web_server" 2>/dev/null
}

# wait_until COMMAND...: tries it for ten seconds.
wait_until() {
  local attempt
  for attempt in {1..200}; do
    if "$@"; then
      return 0
    fi
    sleep 0.05
  done
  return 1
}

# watch_over CAMERA WEB_SERVER CALLER [SMOKE]: waits for the first of these processes to end and
# ends this world.
watch_over() {
  local ended status=0
  wait -n -p ended "$@" || status=$?
  case $ended in
    "$1") fail "the simulated camera has ended" ;;
    "$2") fail "the web server has ended" ;;
  esac
  exit "$status"
}

fail() {
  echo "run: $1" >&2
  exit 1
}

main "$@"
