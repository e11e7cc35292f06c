# shellcheck shell=bash
# Private worlds, for root and for other users. To be sourced: source scripts/namespaces.sh

# Options of unshare for a world of its own: mounts and processes that end with its first process.
private_namespaces=(--mount --pid --fork --kill-child)
if ((EUID != 0)); then
  # Non-root users need a user namespace to mount.
  private_namespaces+=(--user --map-root-user)
fi

# namespaces_are_allowed: whether this machine lets this user create such a world.
namespaces_are_allowed() {
  unshare "${private_namespaces[@]}" true
}

# as_namespace_root COMMAND...: runs the command with the right to create mount namespaces.
as_namespace_root() {
  if ((EUID == 0)); then
    "$@"
  else
    unshare --user --map-root-user "$@"
  fi
}

# private_devices: replaces /dev, in a private mount namespace, by one with the devices that every
# program expects. A log daemon at /dev/log there receives nothing of the machine's.
private_devices() {
  local device
  mkdir /run/dev
  mount -t tmpfs -o mode=755 tmpfs /run/dev
  for device in null zero full random urandom; do
    touch "/run/dev/$device"
    mount --bind "/dev/$device" "/run/dev/$device"
  done
  ln -s /proc/self/fd /run/dev/fd
  ln -s fd/0 /run/dev/stdin
  ln -s fd/1 /run/dev/stdout
  ln -s fd/2 /run/dev/stderr
  mount --move /run/dev /dev
}
