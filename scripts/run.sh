#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# The main job: builds the bundle and the demo host, then opens the image plugin's settings
# window on the bundle's default resources, the way the publishing application does.
#   scripts/run.sh [imghost options...]      e.g. scripts/run.sh --language de --modeless
# Without a display ($DISPLAY unset) the host runs under Xvfb, saves a screenshot of the window
# to build/settings-window.png, closes it with Cancel and prints the stop code.
# IMG_WORKSPACE picks the workspace folder (default: build/demo-workspace).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --parallel "$(nproc)"

ws="${IMG_WORKSPACE:-$PWD/build/demo-workspace}"
host=(./build/src/host/imghost --bundle build/img.bundle --workspace "$ws" "$@")
# The web engine refuses its sandbox to root.
if [ "$(id -u)" -eq 0 ]; then
  export QTWEBENGINE_DISABLE_SANDBOX=1
fi
# The web engine's start-up report is noise here.
export QT_LOGGING_RULES="${QT_LOGGING_RULES:-qt.webenginecontext.info=false}"
echo "Workspace: $ws"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "${host[@]}"
fi
echo "No display: running the host under Xvfb and taking a screenshot of the window."
# Xvfb has no GPU; the web engine's software compositor draws the preview there.
export QTWEBENGINE_CHROMIUM_FLAGS="${QTWEBENGINE_CHROMIUM_FLAGS:---disable-gpu}"
exec xvfb-run -a -s "-screen 0 1600x1200x24" "${host[@]}" --screenshot "$PWD/build/settings-window.png"
