#!/usr/bin/env bash
# Builds Valkenhorn, makes its Debian package with cpack and installs it with
# apt-get (which brings the Qt 6 runtime and fonts it depends on). Run as root
# on Debian 12 (or with password-less sudo). VALKENHORN_BUILD_DIR names
# another build folder than build/.
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD
build=${VALKENHORN_BUILD_DIR:-$top/build}

"$top/scripts/setup-debian.sh"
cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
# The executable, its program folder and its icon: all the package holds.
cmake --build "$build" -j2 --target valkenhorn valkenhorn_icons
rm -f "$build"/valkenhorn_*.deb
(cd "$build" && cpack -G DEB)
deb=$(ls "$build"/valkenhorn_*.deb)

sudo_cmd=()
[ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
if ! "${sudo_cmd[@]}" apt-get install -y -qq "$deb"; then
  "${sudo_cmd[@]}" dpkg -i "$deb" || "${sudo_cmd[@]}" apt-get install -y -qq -f
fi
echo "installed $(dpkg-query -W -f='${Package} ${Version}' valkenhorn): start it from the menu or with: valkenhorn"
