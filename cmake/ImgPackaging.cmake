# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Debian packages, built by `cpack -G DEB` in a configured build folder (scripts/package.sh):
#   imgplugin        the bundle and the imgbundle tool           (component runtime)
#   imgplugin-demo   the demo host imghost                         (component demo)
#   imgplugin-dev    headers, CMake package and pkg-config file    (component dev)
# Packages install under the prefix the build was configured with, so that the folders compiled
# into the programs are the ones the packages use.
set(CPACK_PACKAGE_NAME imgplugin)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE "${IMG_DEBIAN_REVISION}")
set(IMG_PACKAGE_CONTACT "Image plugin maintainers <imgplugin@kelvara.net>"
    CACHE STRING "Maintainer named in the packages")
set(CPACK_PACKAGE_CONTACT "${IMG_PACKAGE_CONTACT}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL runtime demo dev)
# Each package's summary, then its long description in lines of at most 80 characters (CPack
# indents them as the control file needs).
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "settings bundle of the image plugin for a book publisher
The img.bundle folder that a host application loads, and the imgbundle
command-line tool over its workspace.")
set(CPACK_DEBIAN_DEMO_DESCRIPTION "demo host of the image plugin settings bundle
imghost loads the installed bundle and opens its settings window as the
publishing application does.")
set(CPACK_DEBIAN_DEV_DESCRIPTION "kit for hosts of the image plugin settings bundle
The interface headers, find_package(ImgPlugin) and the imgplugin pkg-config
file.")
set(CPACK_COMPONENT_DEMO_DEPENDS runtime)
set(CPACK_COMPONENT_DEV_DEPENDS runtime)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME imgplugin)
set(CPACK_DEBIAN_DEMO_PACKAGE_NAME imgplugin-demo)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME imgplugin-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# What no linked library names: the platform plugins a stand-alone host needs to open a window.
# (The web engine's helper process comes with the web engine library's own dependencies.)
set(CPACK_DEBIAN_DEMO_PACKAGE_DEPENDS "qt6-qpa-plugins")
# The headers include QtCore's; nothing of the dev package is linked, so shlibdeps finds nothing.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qt6-base-dev")

# Each package carries the licence in Debian's machine-readable form and a Debian changelog,
# compressed as the policy asks, in its own documentation folder.
set(debian_doc "${CMAKE_BINARY_DIR}/packaging")
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/copyright.in" "${debian_doc}/copyright" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in"
    "${debian_doc}/changelog.Debian" @ONLY)
add_custom_command(OUTPUT "${debian_doc}/changelog.Debian.gz"
    COMMAND gzip -9nkf "${debian_doc}/changelog.Debian"
    DEPENDS "${debian_doc}/changelog.Debian"
    VERBATIM)
add_custom_target(img_debian_changelog ALL DEPENDS "${debian_doc}/changelog.Debian.gz")
foreach(component runtime demo dev)
    string(TOUPPER ${component} upper)
    install(FILES "${debian_doc}/copyright" "${debian_doc}/changelog.Debian.gz"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}"
        COMPONENT ${component})
endforeach()
# What lintian tells of the bundle that is as meant (see the file for why).
install(FILES "${PROJECT_SOURCE_DIR}/packaging/debian/imgplugin.lintian-overrides"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME imgplugin COMPONENT runtime)

include(CPack)
