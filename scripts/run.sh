#!/usr/bin/env bash
# The main job: builds the bundle, then has the command-line tool build a workspace from the
# bundle's default resources and shows what it made.
#   IMG_WORKSPACE=DIR ./scripts/run.sh   puts the workspace somewhere else (default build/demo-workspace)
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --parallel "$(nproc)"
tool=./build/src/tool/imgbundle
ws="${IMG_WORKSPACE:-$PWD/build/demo-workspace}"
echo "Workspace:"
"$tool" workspace --bundle build/img.bundle --workspace "$ws"
echo "Files in the workspace:"
(cd "$ws" && find . -mindepth 1 | sort)
if [ -f "$ws/settings.dat" ]; then
  echo "Position (settings.dat):"
  "$tool" position read "$ws/settings.dat"
else
  echo "Position (defaultsettings.dat, no settings saved yet):"
  "$tool" position read "$ws/defaultsettings.dat"
fi
