#!/usr/bin/env bash
# Requests per second through a web server, for the handler and for a program that answers without
# reading the request: web_server.sh FOLDER, where FOLDER contains the built programs
set -euo pipefail
folder=$1
requests=2000
session=5f0c2a9e71d4
port=$(comm -23 <(seq 20000 20999 | sort) \
  <(ss --no-header --listening --tcp --numeric | awk '{sub(/.*:/, "", $4); print $4}' | sort -u) | shuf -n 1)
url=http://127.0.0.1:$port

main() {
  serve
  for clients in 1 4 16; do
    for _ in 1 2; do
      measure "$clients" cgi_floor HeartbeatConfirmation
      measure "$clients" camera_remote.cgi HeartbeatConfirmation
    done
    measure "$clients" camera_remote.cgi GetCamStatus
  done
}

serve() {
  local root=/srv/www/bench
  mkdir -p "$root"
  cp "$folder/cgi_floor" "$folder/camera_remote.cgi" "$root"
  cat >/var/tmp/lighttpd.conf <<EOF
server.document-root = "$root"
server.bind = "127.0.0.1"
server.port = $port
server.modules = ("mod_cgi")
cgi.assign = ("/cgi_floor" => "", "/camera_remote.cgi" => "")
EOF
  lighttpd -D -f /var/tmp/lighttpd.conf &
  trap 'kill $!' EXIT
  until curl --silent --output /dev/null --data '' "$url/cgi_floor"; do
    sleep 0.1
  done
}

# measure CLIENTS PROGRAM COMMAND
measure() {
  local body=/var/tmp/body
  printf '{"Request":{"Command":"%s","SessionID":"%s"}}' "$3" "$session" >"$body"
  printf '%2d clients  %-18s %-22s ' "$1" "$2" "$3"
  ab -q -n "$requests" -c "$1" -T application/json -p "$body" "$url/$2" 2>/dev/null |
    awk '/^Requests per second/ {rate = $4} /^Failed|^Non-2xx/ {failed += $NF}
         END {printf "%8.0f requests per second%s\n", rate, failed ? ", FAILED " failed : ""}'
}

main
