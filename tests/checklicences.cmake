# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Every source file names the project's licence in an SPDX line among its first lines (the REUSE
# convention; REUSE.toml covers the files that cannot hold a comment). Run by CTest:
#   cmake -DROOT=<source folder> -P checklicences.cmake
cmake_policy(SET CMP0009 NEW)
file(GLOB_RECURSE sources RELATIVE "${ROOT}"
    "${ROOT}/src/*.cpp" "${ROOT}/src/*.h" "${ROOT}/tests/*.cpp" "${ROOT}/tests/*.h"
    "${ROOT}/bench/*.cpp" "${ROOT}/bench/*.h" "${ROOT}/bench/*.js" "${ROOT}/bench/*.sh"
    "${ROOT}/book/*.js" "${ROOT}/examples/*.cpp" "${ROOT}/scripts/*" "${ROOT}/cmake/*"
    "${ROOT}/resources/html/*.js" "${ROOT}/resources/html/*.css" "${ROOT}/*/CMakeLists.txt"
    "${ROOT}/CMakeLists.txt")
list(FILTER sources EXCLUDE REGEX "(^|/)(node_modules|build[^/]*)/")
set(missing)
foreach(source IN LISTS sources)
    file(STRINGS "${ROOT}/${source}" head LIMIT_COUNT 4)
    if(NOT head MATCHES "SPDX-License-Identifier: BSD-3-Clause")
        list(APPEND missing "${source}")
    endif()
endforeach()
list(LENGTH sources count)
if(missing)
    string(REPLACE ";" "\n  " missing "${missing}")
    message(FATAL_ERROR "no SPDX licence line in:\n  ${missing}")
endif()
message(STATUS "${count} source files name their licence")
