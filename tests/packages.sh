# require_packages PACKAGE...: installs those Debian packages that are missing.
require_packages() {
  local package missing=()
  for package in "$@"; do
    if [[ $(dpkg-query --show --showformat='${Status}' "$package" 2>/dev/null) != "install ok installed" ]]; then
      missing+=("$package")
    fi
  done
  if ((${#missing[@]} == 0)); then
    return 0
  fi
  local as_root=()
  if ((EUID != 0)); then
    as_root=(sudo)
  fi
  echo "installing ${missing[*]}"
  "${as_root[@]}" apt-get update --quiet=2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --quiet=2 --yes --no-install-recommends "${missing[@]}"
  # Debian's package also starts a server for the whole machine, which nobody asked for.
  if [[ " ${missing[*]} " == *" lighttpd "* && -d /run/systemd/system ]]; then
    "${as_root[@]}" systemctl disable --quiet --now lighttpd
  fi
}
