# Runs a host on fresh sample data and compares what it prints: EMULATOR, CWT, EXAMPLE, DIRECTORY,
# EXPECTED.
execute_process(COMMAND ${EMULATOR} ${CWT} sample --force ${DIRECTORY}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${EMULATOR} ${EXAMPLE} ${DIRECTORY}/ OUTPUT_VARIABLE printed
                COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\r\n" "\n" printed "${printed}")
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "printed:\n${printed}\nexpected:\n${expected}")
endif()
