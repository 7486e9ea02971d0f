#!/usr/bin/env bash
# Installs what is missing, builds Valkenhorn and starts the game.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j2 --target valkenhorn
exec build/program/valkenhorn "$@"
