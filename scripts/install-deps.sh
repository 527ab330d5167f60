#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Installs every Debian package that building, running and testing the bundle needs.
# Idempotent: only packages that are missing are installed. Works as root or through sudo.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config dpkg-dev
  qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
  qt6-webengine-dev qt6-webengine-dev-tools libqt6webenginecore6-bin
  libgl-dev libxkbcommon-dev
  qt6-qpa-plugins libqt6svg6 qt6-translations-l10n
  xvfb xauth x11-utils imagemagick
  lintian
  fonts-dejavu-core fonts-noto-cjk
  nodejs
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null 2>&1; then
  as_root=(sudo)
else
  echo "install-deps: need root or sudo to install: ${missing[*]}" >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
