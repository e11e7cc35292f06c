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
