# Checks that a shared library exports the names of a list and no others.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
                OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${NAMES} names)
string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
list(TRANSFORM lines REPLACE " .*" "")
list(SORT names)
list(SORT lines)
if(NOT lines STREQUAL names)
    message(FATAL_ERROR "${LIBRARY} exports ${lines}")
endif()
