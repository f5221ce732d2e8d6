#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build, test and benchmark zkit.
# Idempotent and quiet when everything is present; uses sudo when not root.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libqt6uitools6 qt6-tools-dev libqt6opengl6-dev
  libpugixml-dev libtinyxml2-dev
  clang libclang-rt-14-dev
  fonts-dejavu-core
  valgrind
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
sudo=()
[ "$(id -u)" -ne 0 ] && sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
