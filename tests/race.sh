#!/usr/bin/env bash
# Counts what happens to settings files that two commands write at the same moment:
# tests/race.sh ROUNDS. Each round starts two writers and a reader at once.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tests/packages.sh

if [[ ! ${1-} =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: tests/race.sh ROUNDS" >&2
  exit 2
fi
require_packages cmake make g++ googletest nlohmann-json3-dev
cmake --preset release -DCAMERA_BUILD_TESTS=ON >/dev/null
cmake --build --preset release --parallel "$(nproc)" --target blackbox_tests >/dev/null
CAMERA_RACE_ROUNDS=$1 build/release/blackbox_tests --gtest_filter='RaceTest.*' --gtest_brief=1
