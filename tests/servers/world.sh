#!/usr/bin/env bash
# A camera of its own, to be started in new mount, network and process namespaces:
#
#   world.sh COMMAND...
#
# The handler and the page are installed in /usr, a simulated camera plays the daemons, and every
# port is free. The command is run in it, and its status is the result.
set -euo pipefail
source scripts/namespaces.sh

mount --make-rprivate /
mount -t proc proc /proc
ip link set lo up
for folder in /run /var/tmp /srv; do
  mount -t tmpfs tmpfs "$folder"
done
mkdir -p /run/usr/upper /run/usr/work /run/lock
mount -t overlay overlay -o lowerdir=/usr,upperdir=/run/usr/upper,workdir=/run/usr/work /usr
cmake --install build/release --prefix /usr --component runtime >/run/install.log
cmake --install build/release --prefix /usr --component web >>/run/install.log

private_devices
install -d -o www-data -g www-data -m 0750 /var/tmp/lighttpd
build/release/simulated_camera --session server-test --quiet &
for _ in {1..200}; do
  [[ -S /run/quonta_cp.sock && -S /run/streaming.sock && -S /dev/log ]] && break
  sleep 0.05
done
chmod 0666 /run/*.sock /dev/log
chown www-data /var/tmp/lighttpd/.session

"$@"
