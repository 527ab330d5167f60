#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Builds the Debian packages into build-deb/packages/:
#   imgplugin        the bundle (under /usr/lib/<multiarch>/imgplugin) and the imgbundle tool
#   imgplugin-demo   the demo host imghost
#   imgplugin-dev    the interface headers, find_package(ImgPlugin) and imgplugin.pc
# A release build configured for the prefix /usr with the distribution's hardening flags
# (dpkg-buildflags), installed stripped by cpack, its dependencies computed by dpkg-shlibdeps.
#   scripts/package.sh [cmake options...]     JOBS=1 scripts/package.sh builds on one core
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build-deb
./scripts/install-deps.sh
# Every hardening feature Debian has (bindnow too), unless the caller chose otherwise.
export DEB_BUILD_MAINT_OPTIONS="${DEB_BUILD_MAINT_OPTIONS:-hardening=+all}"
# CMake reads no CPPFLAGS: the preprocessor's flags (_FORTIFY_SOURCE) go with the compiler's.
cxxflags="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
ldflags="$(dpkg-buildflags --get LDFLAGS)"
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DIMG_BUILD_TESTS=OFF -DIMG_BUILD_BENCH=OFF \
  -DCMAKE_CXX_FLAGS="$cxxflags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags" \
  -DCMAKE_SHARED_LINKER_FLAGS="$ldflags" -DCMAKE_MODULE_LINKER_FLAGS="$ldflags" "$@"
cmake --build "$build_dir" --parallel "${JOBS:-$(nproc)}"
rm -f "$build_dir"/packages/*.deb
(cd "$build_dir" && cpack -G DEB -B "$PWD/packages")
ls -1 "$build_dir"/packages/*.deb
