# Gives a library or program the project's version: in its file name where the system keeps it there,
# in its version resource on Windows. A program there reads names and arguments as UTF-8.
function(hwt_version target description)
    if(WIN32)
        get_target_property(type ${target} TYPE)
        set(manifest "")
        if(type STREQUAL EXECUTABLE)
            set(manifest "1 24 \"${PROJECT_SOURCE_DIR}/cmake/windows/utf8.manifest\"")
        endif()
        set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
        configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/version.rc.in ${resource} @ONLY)
        target_sources(${target} PRIVATE ${resource})
    else()
        # A minor version may change the interface as long as the major one is 0.
        set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION}
            SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    endif()
endfunction()
