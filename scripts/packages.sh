# shellcheck shell=bash
# Debian packages. To be sourced: source scripts/packages.sh

# require_packages PACKAGE...: installs the Debian packages that are missing, as root or with sudo.
# Does nothing, and needs no network, when all of them are installed. Calls that run at the same
# time wait for each other. Fails if a package cannot be installed.
require_packages() {
  local missing
  missing=$(missing_packages "$@")
  if [[ -z $missing ]]; then
    return 0
  fi
  (
    # The directory serves as the lock: it exists on every machine and every user can open it.
    exec 9</var/lib/dpkg
    flock 9
    readarray -t missing < <(missing_packages "$@") # another call may have installed some
    ((${#missing[@]} == 0)) || install_packages "${missing[@]}" 9<&-
  )
}

# Prints those of the packages that are not installed, one per line.
missing_packages() {
  printf '%s\n' "$@" | sort -u | comm -23 - <(
    dpkg-query --show --showformat='${Status} ${Package}\n' "$@" 2>/dev/null |
      sed -n 's/^install ok installed //p' | sort -u
  )
}

install_packages() {
  local as_root=()
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      echo "packages are missing; install them as root: apt-get install $*" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "installing $*"
  # The package lists may be missing or old: then fetch them and try again.
  if ! apt_get install "$@" 2>/dev/null; then
    apt_get update && apt_get install "$@" || return 1
  fi
  # The package of the web server also starts one for the whole machine. The tests start their own.
  if [[ " $* " == *" lighttpd "* && -d /run/systemd/system ]]; then
    "${as_root[@]}" systemctl disable --quiet --now lighttpd
  fi
}

# apt_get COMMAND...: waits if another program is installing packages. Uses the caller's as_root.
apt_get() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get --quiet=2 --yes \
    --no-install-recommends --option DPkg::Lock::Timeout=600 "$@" >/dev/null
}
