# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Writes the manual page of imgbundle from the tool's own --help texts, so that the page and the
# help can never tell different stories. Run by the build after the tool is linked:
#   cmake -DTOOL=path/to/imgbundle -DVERSION=1.1.0 -DDATE=2026-11-24 -DOUTPUT=imgbundle.1 \
#         -P manpage.cmake
# The sections a reader of manual pages looks for that no --help text holds (exit status, files,
# environment, examples, see also) are written here.

foreach(var TOOL VERSION DATE OUTPUT)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "manpage.cmake needs -D${var}=...")
    endif()
endforeach()

# The --help text of the tool (no words) or of one command or group.
function(help_text out)
    execute_process(COMMAND "${TOOL}" ${ARGN} --help
        OUTPUT_VARIABLE text ERROR_VARIABLE error RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${TOOL} ${ARGN} --help failed (${result}): ${error}")
    endif()
    set(${out} "${text}" PARENT_SCOPE)
endfunction()

# Text set as it is, line for line: roff reads a backslash as an escape, a line that starts
# with a dot or a quote as a request, and "-" as a hyphen where a minus is meant.
function(literal out text)
    string(REPLACE "\\" "\\e" text "${text}")
    string(REPLACE "-" "\\-" text "${text}")
    string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
    set(${out} ".nf\n${text}.fi\n" PARENT_SCOPE)
endfunction()

help_text(overview)
# The command lines of the overview are indented by two spaces, their summaries by six; the
# name is the lower-case words before the arguments.
string(REGEX MATCHALL "\n  [a-z][a-z ]*[a-z]" names "${overview}")

literal(description "${overview}")
set(page ".TH IMGBUNDLE 1 \"${DATE}\" \"imgbundle ${VERSION}\" \"User Commands\"\n")
string(APPEND page ".SH NAME\nimgbundle \\- work on the image plugin's bundle and workspace\n")

# One synopsis line per command, as the overview gives it.
string(APPEND page ".SH SYNOPSIS\n")
string(REGEX MATCHALL "\n  [a-z][^\n]*" synopsis "${overview}")
foreach(line IN LISTS synopsis)
    string(STRIP "${line}" line)
    string(REPLACE "\\" "\\e" line "${line}")
    string(REPLACE "-" "\\-" line "${line}")
    string(APPEND page ".B imgbundle\n${line}\n.br\n")
endforeach()
string(APPEND page ".B imgbundle\n\\-\\-help | \\-\\-version\n")

string(APPEND page ".SH DESCRIPTION\n${description}.SH COMMANDS\n")
foreach(line IN LISTS names)
    string(STRIP "${line}" name)
    string(REPLACE " " ";" words "${name}")
    help_text(help ${words})
    literal(body "${help}")
    string(APPEND page ".SS \"imgbundle ${name}\"\n${body}")
endforeach()

string(APPEND page [=[
.SH EXIT STATUS
.TP
.B 0
The command did its work, or \-\-help or \-\-version answered.
.TP
.B 1
The work failed: a file that cannot be read or written, a damaged description, a full disk or a
closed standard output.
.TP
.B 2
A wrong argument: an unknown or repeated option, a missing or extra argument, no command.
.SH FILES
.TP
.I ../lib/imgplugin/img.bundle
The bundle of the tool's own installation, relative to the folder of the program; used when
\-\-bundle is not given.
.TP
.I ~/.local/share/Kelvara/<product id>_resource/Plugin/Save/img
The workspace used when \-\-workspace is not given: the host's plugin save folder in the
per-user data folder.
.TP
.I settings.dat\fR, \fIimg.xml\fR, \fIconfig.js\fR, \fIbookPlugin.js\fR, \fIfiles
The workspace's position file, description, preview script, the book's scrambled script and the
list of the plugin's files.
.SH ENVIRONMENT
.TP
.B XDG_DATA_HOME
The per-user data folder that holds the default workspace (\fI~/.local/share\fR when unset).
.SH EXAMPLES
Fill the default workspace from the installed bundle and print its path:
.PP
.nf
    imgbundle workspace
.fi
.PP
Write a position file with margins of 10 % and no transparency, above the page:
.PP
.nf
    imgbundle position write settings.dat 10 10 10 10 0 1
.fi
.PP
Write the book's script of a workspace, then read it back as text:
.PP
.nf
    imgbundle publish \-\-workspace ws
    imgbundle unscramble < ws/bookPlugin.js
.fi
.SH SEE ALSO
.BR imghost (1)
]=])
file(WRITE "${OUTPUT}" "${page}")
