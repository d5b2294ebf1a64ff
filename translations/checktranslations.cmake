# Lists the texts of the sources that have no finished translation in TS_FILE and
# fails when there is one. Runs lupdate on a copy of TS_FILE, so that texts added
# to the sources since the file was last updated count as untranslated too.
#
#   cmake -DLUPDATE=... -DLCONVERT=... -DTS_FILE=... -DSOURCE_ROOT=<src> -DWORK_DIR=... -P checktranslations.cmake
foreach(var LUPDATE LCONVERT TS_FILE SOURCE_ROOT WORK_DIR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "checktranslations: ${var} is not set")
    endif()
endforeach()

get_filename_component(ts_name ${TS_FILE} NAME)
file(MAKE_DIRECTORY ${WORK_DIR})
set(copy ${WORK_DIR}/${ts_name})
configure_file(${TS_FILE} ${copy} COPYONLY)

# The module and its platform layer; the tools have texts of their own.
execute_process(
    COMMAND ${LUPDATE} -silent -locations relative -no-ui-lines
            ${SOURCE_ROOT}/applications ${SOURCE_ROOT}/platform -ts ${copy}
    RESULT_VARIABLE rc
    ERROR_VARIABLE lupdate_errors)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "checktranslations: lupdate failed (${rc}): ${lupdate_errors}")
endif()
if(lupdate_errors)
    # lupdate warns about texts it cannot read, such as tr() with a non-literal.
    message(FATAL_ERROR "checktranslations: lupdate warned:\n${lupdate_errors}")
endif()

# Texts that the sources no longer have are left in the file by lupdate as
# vanished or obsolete: harmless, but the file wants an update.
file(READ ${copy} ts_text)
string(REGEX MATCHALL "type=\"(vanished|obsolete)\"" stale "${ts_text}")
list(LENGTH stale stale_count)
if(stale_count GREATER 0)
    message(WARNING "${ts_name}: ${stale_count} translation(s) of texts the sources no longer have; "
        "run the update_translations target")
endif()

# The unfinished messages only, as a PO file: one msgctxt/msgid per message,
# easy to list line by line.
set(po ${WORK_DIR}/${ts_name}.unfinished.po)
execute_process(
    COMMAND ${LCONVERT} -no-finished -no-obsolete -locations absolute -i ${copy} -of po -o ${po}
    RESULT_VARIABLE rc
    ERROR_VARIABLE lconvert_errors)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "checktranslations: lconvert failed (${rc}): ${lconvert_errors}")
endif()

file(STRINGS ${po} po_lines)
set(untranslated "")
set(count 0)
set(location "")
set(context "")
foreach(line IN LISTS po_lines)
    if(line MATCHES "^#: (.*)$")
        set(location "${CMAKE_MATCH_1}")
    elseif(line MATCHES "^msgctxt \"([^|\"]*)")
        # lconvert writes the context as "<context>|<disambiguation>".
        set(context "${CMAKE_MATCH_1}")
    elseif(line MATCHES "^msgid \"(.+)\"$")
        math(EXPR count "${count} + 1")
        string(APPEND untranslated "  ${context}: \"${CMAKE_MATCH_1}\"  (${location})\n")
        set(location "")
        set(context "")
    endif()
endforeach()

if(count GREATER 0)
    message(FATAL_ERROR "${ts_name}: ${count} untranslated text(s):\n${untranslated}")
endif()
message(STATUS "${ts_name}: every text is translated")
