# Makes the import library of a DLL whose exported names are undecorated:
# NM, DLLTOOL, LIBRARY, IMPORT_LIBRARY, NAMES.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${NAMES} names)
get_filename_component(file_name ${LIBRARY} NAME)
set(definition "LIBRARY ${file_name}\nEXPORTS\n")
foreach(name ${names})
    # A __stdcall function's symbol tells the bytes of its arguments.
    if(NOT symbols MATCHES " T _(${name}@[0-9]+)\n")
        message(FATAL_ERROR "${LIBRARY} has no __stdcall function ${name}")
    endif()
    string(APPEND definition "${CMAKE_MATCH_1}\n")
endforeach()
file(WRITE ${IMPORT_LIBRARY}.def ${definition})
execute_process(COMMAND ${DLLTOOL} --kill-at --input-def ${IMPORT_LIBRARY}.def
                        --output-lib ${IMPORT_LIBRARY} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${IMPORT_LIBRARY}.def)
