# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Where the bundle is assembled in the build tree, laid out like a macOS bundle on every platform
# so that bundle-relative paths such as Contents/Resources/data/defaultsettings.dat hold everywhere.
set(IMG_BUNDLE_DIR "${CMAKE_BINARY_DIR}/img.bundle")
set(IMG_BUNDLE_RESOURCES "${IMG_BUNDLE_DIR}/Contents/Resources")
if(APPLE)
    set(IMG_BUNDLE_BINARY_SUBDIR "Contents/MacOS")
elseif(WIN32)
    set(IMG_BUNDLE_BINARY_SUBDIR "Contents/Windows")
else()
    set(IMG_BUNDLE_BINARY_SUBDIR "Contents/Linux")
endif()

# Where it is installed: ${libdir}/imgplugin/img.bundle. GNUInstallDirs decides libdir when the
# build is configured ("lib", or "lib/<multiarch>" on Debian for the prefix /usr); a later
# `cmake --install --prefix` moves the whole tree but keeps that relative layout.
set(IMG_INSTALL_BUNDLE_DIR "${CMAKE_INSTALL_LIBDIR}/imgplugin")
set(IMG_INSTALL_BUNDLE "${IMG_INSTALL_BUNDLE_DIR}/img.bundle")
# The installed programs find the bundle from their own folder, so an installed tree may be moved
# as a whole; only this relative path is compiled into them, never a folder of the build tree.
file(RELATIVE_PATH IMG_BUNDLE_FROM_BINDIR "${CMAKE_INSTALL_FULL_BINDIR}"
    "${CMAKE_INSTALL_FULL_LIBDIR}/imgplugin/img.bundle")

# A program built into programDir looks for the bundle at programDir/IMG_BUNDLE_FROM_BINDIR, as
# it does once installed. A link at that place in the build tree to the assembled bundle lets the
# very same binary run from the build tree, without it knowing where the build tree is.
function(img_link_bundle_beside_programs programDir)
    cmake_path(ABSOLUTE_PATH IMG_BUNDLE_FROM_BINDIR BASE_DIRECTORY "${programDir}"
        NORMALIZE OUTPUT_VARIABLE link)
    cmake_path(IS_PREFIX CMAKE_BINARY_DIR "${link}" NORMALIZE inBuildTree)
    if(NOT inBuildTree)
        message(WARNING "The installed bundle's place, ${IMG_BUNDLE_FROM_BINDIR} from the "
            "programs, lies outside the build tree: programs run from the build tree need --bundle.")
        return()
    endif()
    if(IS_SYMLINK "${link}" OR EXISTS "${link}")
        file(REMOVE "${link}")
    endif()
    cmake_path(GET link PARENT_PATH linkParent)
    file(MAKE_DIRECTORY "${linkParent}")
    file(CREATE_LINK "${IMG_BUNDLE_DIR}" "${link}" SYMBOLIC)
endfunction()
