# Limits a shared library's exports to the names of a list, one a line. On Windows the names are
# exported undecorated, while the import library knows them by the decorated names that callers of
# __stdcall functions ask for.
function(hwt_export_names target list)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
    file(READ ${list} names)
    if(WIN32)
        set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
        file(CONFIGURE OUTPUT ${script} CONTENT "LIBRARY ${target}.dll\nEXPORTS\n@names@" @ONLY)
        target_sources(${target} PRIVATE ${script})
        target_link_options(${target} PRIVATE -Wl,--enable-stdcall-fixup)
        add_custom_command(TARGET ${target} POST_BUILD VERBATIM COMMAND ${CMAKE_COMMAND}
            -DNM=${CMAKE_NM} -DDLLTOOL=${CMAKE_DLLTOOL} -DLIBRARY=$<TARGET_FILE:${target}>
            -DIMPORT_LIBRARY=$<TARGET_LINKER_FILE:${target}> -DNAMES=${list}
            -P ${PROJECT_SOURCE_DIR}/cmake/import_library.cmake)
    else()
        string(REPLACE "\n" ";\n" names "${names}")
        set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        file(CONFIGURE OUTPUT ${script} CONTENT "{\nglobal:\n@names@local: *;\n};\n" @ONLY)
        target_link_options(${target} PRIVATE -Wl,--version-script=${script})
    endif()
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
