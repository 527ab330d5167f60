# Debian packages, built by `cpack -G DEB` in a configured build folder (scripts/package.sh):
#   imgplugin        the bundle and the imgbundle tool           (component runtime)
#   imgplugin-demo   the demo host imghost                         (component demo)
#   imgplugin-dev    headers, CMake package and pkg-config file    (component dev)
# Packages install under the prefix the build was configured with, so that the folders compiled
# into the programs are the ones the packages use.
set(CPACK_PACKAGE_NAME imgplugin)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE "${IMG_DEBIAN_REVISION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Settings bundle of the image plugin for a book publisher")
set(CPACK_PACKAGE_CONTACT "Image plugin maintainers <imgplugin@localhost>"
    CACHE STRING "Maintainer named in the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL runtime demo dev)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Image plugin settings bundle\n The img.bundle folder that a host application loads, and the \
imgbundle command-line tool over its workspace.")
set(CPACK_COMPONENT_DEMO_DESCRIPTION
    "Demo host of the image plugin settings bundle\n imghost loads the installed bundle and opens \
its settings window as the publishing application does.")
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "Development kit for hosts of the image plugin settings bundle\n The interface headers, \
find_package(ImgPlugin) and the imgplugin pkg-config file.")
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

include(CPack)
