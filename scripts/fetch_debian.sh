#!/usr/bin/env bash
# fetch_debian.sh ARCHITECTURE FOLDER PACKAGE...: downloads Debian packages of another architecture
# and unpacks them below FOLDER. PACKAGE/depends stands for what a package depends on: the newest
# kernel, for example, is linux-image-armmp/depends. Nothing is installed: apt works on a private
# state folder, so the machine's own architectures and package lists stay as they are. Needs no root.
set -euo pipefail

if (($# < 3)); then
  echo "usage: $0 ARCHITECTURE FOLDER PACKAGE[/depends]..." >&2
  exit 2
fi
architecture=$1
mkdir -p "$2"
folder=$(cd "$2" && pwd)
shift 2

state=$folder/apt
mkdir -p "$state/lists/partial" "$state/archives/partial"
: >"$state/status"
options=(
  --quiet=2
  -o "APT::Architecture=$architecture" -o "APT::Architectures::=$architecture"
  -o "Dir::State=$state" -o "Dir::State::lists=$state/lists" -o "Dir::State::status=$state/status"
  -o "Dir::Cache=$state" -o "Dir::Cache::archives=$state/archives"
  -o APT::Sandbox::User= # root's apt would otherwise drop to a user who cannot write here
)
# A package list that is being updated at the source does no harm unless a package below is missing.
apt-get "${options[@]}" update || echo "fetch_debian.sh: some package lists could not be fetched" >&2
packages=()
for package in "$@"; do
  if [[ $package == */depends ]]; then
    depends=$(apt-cache "${options[@]}" depends --important "${package%/depends}")
    readarray -t -O "${#packages[@]}" packages < <(sed -n 's/^ *Depends: //p' <<<"$depends")
  else
    packages+=("$package")
  fi
done
cd "$state/archives"
apt-get "${options[@]}" download "${packages[@]}"
for package in *.deb; do
  dpkg-deb --extract "$package" "$folder"
  rm "$package"
done
