#!/usr/bin/env bash
# Installs what the build and the tests need from Debian's packages. Safe to run
# again: it installs only what is missing. With --fuzz it also installs clang and its
# libFuzzer runtime, which the long fuzzing runs of tools/fuzz need (the tests do not).
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  libgtest-dev libgmock-dev googletest libbenchmark-dev libcli11-dev
  qt6-base-dev qt6-base-dev-tools libgl-dev
  fonts-dejavu-core xvfb xauth
  nlohmann-json3-dev bibutils
)
if [ "${1:-}" = "--fuzz" ]; then
  packages+=(clang libclang-rt-dev)
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: everything is installed"
  exit 0
fi

echo "setup: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
