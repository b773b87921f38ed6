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
# The names that it is told become names in the library: they are the same wherever it is built.
cmake_path(GET IMPORT_LIBRARY PARENT_PATH folder)
cmake_path(GET IMPORT_LIBRARY FILENAME name)
execute_process(
    COMMAND ${DLLTOOL} --kill-at --input-def ${name}.def --output-lib ${name} --temp-prefix ${name}
    WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${IMPORT_LIBRARY}.def)
