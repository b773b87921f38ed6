# Checks what a DLL asks of the system: OBJDUMP, LIBRARY.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers
                COMMAND_ERROR_IS_FATAL ANY)
# No library that would have to be delivered with it,
string(REGEX MATCHALL "DLL Name: [^\r\n]+" libraries "${headers}")
foreach(library ${libraries})
    if(NOT library MATCHES "DLL Name: (KERNEL32|USER32|msvcrt)[.]dll$")
        message(FATAL_ERROR "${LIBRARY} needs ${library}")
    endif()
endforeach()
# and the system's own functions where users rely on what these do.
foreach(function GetProcAddress MessageBoxA PostQuitMessage CopyFileA MoveFileExA _sopen _read)
    if(NOT headers MATCHES "[ \t]${function}[\r\n]")
        message(FATAL_ERROR "${LIBRARY} does not call ${function}")
    endif()
endforeach()
