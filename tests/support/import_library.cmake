# Checks that an import library has the decorated names of a list and no others: NM, LIBRARY, NAMES.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} ${LIBRARY} OUTPUT_VARIABLE symbols ERROR_QUIET
                COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${NAMES} names)
string(REGEX MATCHALL " T _[^\n]+" known "${symbols}")
list(TRANSFORM known REPLACE " T _" "")
list(SORT names)
list(SORT known)
if(NOT known STREQUAL names)
    message(FATAL_ERROR "${LIBRARY} has ${known}")
endif()
