# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# img_add_qtest(<name> SOURCES <files...> LIBRARIES <targets...> [DISPLAY offscreen|xvfb])
# Every test gets its own HOME, data and temporary folders (see tests/testenv.h) and never touches
# the real user's files. DISPLAY xvfb marks tests that need a real X server (the web view); the
# test command runs the whole suite under xvfb-run so such tests find one.
function(img_add_qtest name)
    cmake_parse_arguments(ARG "" "DISPLAY" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE Qt6::Test ${ARG_LIBRARIES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_definitions(${name} PRIVATE
        IMG_BUNDLE_DIR="${IMG_BUNDLE_DIR}"
        IMG_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        IMG_BINARY_DIR="${CMAKE_BINARY_DIR}")
    add_test(NAME ${name} COMMAND ${name})
    set(env "QTWEBENGINE_DISABLE_SANDBOX=1" "QT_LOGGING_RULES=" "ASAN_OPTIONS=detect_leaks=0")
    if(NOT ARG_DISPLAY OR ARG_DISPLAY STREQUAL "offscreen")
        list(APPEND env "QT_QPA_PLATFORM=offscreen")
    else()
        list(APPEND env "QT_QPA_PLATFORM=xcb")
        # The web engine's own Chromium code frees some objects with a sized delete of another
        # size; the sanitizer's replacement of operator delete would report that in every web
        # view test, though it is not this project's code.
        list(FILTER env EXCLUDE REGEX "^ASAN_OPTIONS=")
        list(APPEND env "ASAN_OPTIONS=detect_leaks=0:new_delete_type_mismatch=0")
    endif()
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${env}" TIMEOUT 300)
    if(TARGET img_bundle)
        add_dependencies(${name} img_bundle)
    endif()
endfunction()
