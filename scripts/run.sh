#!/usr/bin/env bash
# The main job: builds the bundle and runs it on its default resources.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --parallel "$(nproc)"
ws="${IMG_WORKSPACE:-$PWD/build/demo-workspace}"
./build/src/tool/imgbundle workspace --bundle build/img.bundle --workspace "$ws"
echo "Files in the workspace:"
(cd "$ws" && find . -mindepth 1 | sort)
