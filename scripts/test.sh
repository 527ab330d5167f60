#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Installs what is missing, builds, and runs every test (C++ suites and the book's JavaScript).
#   scripts/test.sh             the normal build in build/
#   scripts/test.sh --sanitize  the address+undefined sanitizer build in build-sanitize/
#   scripts/test.sh --portable  the portable file layer (as a system without its own) in
#                               build-portable/
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build
cmake_args=()
if [ "${1:-}" = "--sanitize" ]; then
  build_dir=build-sanitize
  cmake_args+=(-DIMG_SANITIZE=ON -DIMG_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug)
elif [ "${1:-}" = "--portable" ]; then
  build_dir=build-portable
  cmake_args+=(-DIMG_PORTABLE_FS=ON -DIMG_BUILD_BENCH=OFF)
fi

./scripts/install-deps.sh
cmake -S . -B "$build_dir" -G Ninja "${cmake_args[@]}"
cmake --build "$build_dir" --parallel "$(nproc)"
export QTWEBENGINE_DISABLE_SANDBOX=1
xvfb-run -a -s "-screen 0 1600x1200x24" \
  ctest --test-dir "$build_dir" --output-on-failure --parallel "$(nproc)" --timeout 300
