# Writes the manual page of imgbundle from the tool's own --help texts, so that the page and the
# help can never tell different stories. Run by the build after the tool is linked:
#   cmake -DTOOL=path/to/imgbundle -DVERSION=1.0 -DOUTPUT=imgbundle.1 -P manpage.cmake

foreach(var TOOL VERSION OUTPUT)
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
set(page ".TH IMGBUNDLE 1 \"\" \"imgbundle ${VERSION}\" \"User Commands\"\n")
string(APPEND page ".SH NAME\nimgbundle \\- work on the image plugin's bundle and workspace\n")
string(APPEND page ".SH DESCRIPTION\n${description}.SH COMMANDS\n")
foreach(line IN LISTS names)
    string(STRIP "${line}" name)
    string(REPLACE " " ";" words "${name}")
    help_text(help ${words})
    literal(body "${help}")
    string(APPEND page ".SS \"imgbundle ${name}\"\n${body}")
endforeach()
file(WRITE "${OUTPUT}" "${page}")
