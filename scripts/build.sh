# shellcheck shell=bash
# Building with the presets of CMakePresets.json. To be sourced, from scripts whose working folder is
# the top of the tree: source scripts/build.sh
source "${BASH_SOURCE[0]%/*}/packages.sh"
source "${BASH_SOURCE[0]%/*}/quiet.sh"

# build PRESET [-DOPTION=VALUE...] [TARGET...]: installs the packages that the preset and the options
# need, and builds the targets, or all of them, in build/PRESET. Options stay set in that folder, so
# name the targets you need. Builds in the same folder wait for each other.
build() {
  local preset=$1 argument options=() targets=() packages
  shift
  for argument in "$@"; do
    case $argument in
      -D*) options+=("$argument") ;;
      *) targets+=("$argument") ;;
    esac
  done
  read -d '' -ra packages < <(build_packages "$preset" "${options[*]}") || true
  require_packages "${packages[@]}" && mkdir -p build || return 1
  (
    flock 9
    quietly cmake --preset "$preset" "${options[@]}" 9>&- &&
      cmake --build --preset "$preset" --parallel "$(nproc)" --target "${targets[@]-all}" 9>&-
  ) 9>"build/$preset.lock"
}

# build_packages PRESET OPTIONS: prints the Debian packages that the build needs.
build_packages() {
  echo cmake make
  case $1 in
    arm) echo g++-arm-linux-gnueabihf qemu-user-static ;;
    small) echo g++ musl-dev ;;
    arm-small) echo g++-arm-linux-gnueabihf qemu-user-static ;; # its toolchain file fetches musl
    fuzz) echo clang libclang-rt-dev ;;
    *) echo g++ ;;
  esac
  if [[ "$1 $2" == *@(coverage|CAMERA_BUILD_TESTS=ON)* ]]; then
    echo googletest nlohmann-json3-dev
  fi
  if [[ "$1 $2" == *@(tsan|CAMERA_BUILD_SIMULATOR=ON)* ]]; then
    echo libcli11-dev libcpp-httplib-dev nlohmann-json3-dev pkgconf
  fi
}
