#!/usr/bin/env bash
# Installs what building, running and testing Valkenhorn needs on Debian 12.
# Only missing packages are installed; run as root (or with password-less sudo).
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git dpkg-dev
  qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev qt6-qpa-plugins libgl-dev
  libgif-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth xdg-utils xdotool
  fonts-liberation fonts-dejavu-core fonts-dejavu-extra
  python3 unison
  dbus-daemon desktop-file-utils appstream
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo_cmd=()
[ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
