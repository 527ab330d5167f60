# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Manual pages are installed compressed, as Debian's policy asks: `gzip -9n` leaves the name and
# time out of the archive, so that the same page gives the same bytes on every build.
#   img_add_man_page(<target> <page file> <install component>)
function(img_add_man_page target page component)
    add_custom_command(OUTPUT "${page}.gz"
        COMMAND gzip -9nkf "${page}"
        DEPENDS "${page}"
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS "${page}.gz")
    get_filename_component(name "${page}" NAME)
    string(REGEX MATCH "[0-9]$" section "${name}")
    install(FILES "${page}.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}"
        COMPONENT ${component})
endfunction()
