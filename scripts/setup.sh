#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build and test the editor.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev qt6-translations-l10n
  libsqlite3-dev sqlite3 zlib1g-dev libssl-dev
  libgtest-dev
  python3 python3-pil
  clang libclang-rt-14-dev
  fonts-dejavu-core
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if ((${#missing[@]})); then
  echo "Installiere: ${missing[*]}"
  sudo=()
  if [ "$(id -u)" -ne 0 ]; then sudo=(sudo); fi
  "${sudo[@]}" apt-get update -q
  DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
