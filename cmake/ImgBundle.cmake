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
set(IMG_INSTALL_BUNDLE_DIR "${CMAKE_INSTALL_LIBDIR}/imgplugin")
