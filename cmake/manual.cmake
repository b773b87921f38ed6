# The manual pages, which are written when they are wanted: from what cwt tells of itself, the headers
# and the documentation.
option(HWT_MANUAL "Write and install the manual pages, by help2man and pandoc" OFF)
if(NOT HWT_MANUAL)
    return()
endif()
find_program(HELP2MAN help2man REQUIRED)
find_program(PANDOC pandoc REQUIRED)

set(to ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_MANDIR})
set(record ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_DATADIR}/hundredweight/record.json)
set(scripts write_manual_pages.sh manual/write_markdown.py manual/header_pages.py manual/page.lua)
list(TRANSFORM scripts PREPEND ${PROJECT_SOURCE_DIR}/scripts/)
file(GLOB sources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/include/hundredweight/*.h ${PROJECT_SOURCE_DIR}/docs/*.md)
add_custom_command(OUTPUT ${to}/man1/cwt.1
    COMMAND ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=$<TARGET_FILE_DIR:hundredweight>
            ${PROJECT_SOURCE_DIR}/scripts/write_manual_pages.sh $<TARGET_FILE:cwt> ${record} ${to}
    DEPENDS cwt ${record} ${scripts} ${sources} VERBATIM)
add_custom_target(manual ALL DEPENDS ${to}/man1/cwt.1)
add_dependencies(manual languages)
install(DIRECTORY ${to}/ DESTINATION ${CMAKE_INSTALL_MANDIR})
