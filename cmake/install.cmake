# What an installation consists of.
include(CMakePackageConfigHelpers)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/hundredweight)
if(WIN32)
    set(CMAKE_INSTALL_DOCDIR docs)
endif()

# A distribution has its libraries where the loader looks. What cwt alone loads lies in a folder of
# its own there, where the platform library finds it by its run path.
option(HWT_DISTRIBUTION "Lay the installation out as a distribution's packages have it" OFF)
set(loaded_directory ${CMAKE_INSTALL_LIBDIR})
if(HWT_DISTRIBUTION)
    string(APPEND loaded_directory /hundredweight)
endif()

# Already in the build tree: CMake would leave empty entries there, which stand for the current
# directory, to have room for others.
set_target_properties(hundredweight hundredweight_platform cwt tolvex servgd PROPERTIES
    BUILD_WITH_INSTALL_RPATH ON)
file(RELATIVE_PATH from_program /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(cwt PROPERTIES INSTALL_RPATH $ORIGIN/${from_program})
set_target_properties(hundredweight hundredweight_platform PROPERTIES INSTALL_RPATH $ORIGIN)
if(HWT_DISTRIBUTION)
    set_target_properties(hundredweight cwt PROPERTIES INSTALL_RPATH "")
    set_target_properties(hundredweight_platform PROPERTIES INSTALL_RPATH $ORIGIN/hundredweight)
endif()
install(TARGETS hundredweight hundredweight_platform EXPORT hundredweight)
install(TARGETS cwt)
# The stand-ins for the partner libraries, which cwt loads unless it is told otherwise.
install(TARGETS tolvex servgd
    LIBRARY DESTINATION ${loaded_directory} ARCHIVE EXCLUDE_FROM_ALL)
if(TARGET cwt-front)
    set_target_properties(cwt-front PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
    if(NOT HWT_DISTRIBUTION)
        set_target_properties(cwt-front PROPERTIES INSTALL_RPATH $ORIGIN)
    endif()
    install(TARGETS cwt-front LIBRARY DESTINATION ${loaded_directory})
    # The unit names the program where it is installed, which is known then.
    set(unit lib/systemd/system/cwt-serve.service)
    install(CODE "set(program \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/cwt\")
        set(page \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DOCDIR}/service.md\")
        configure_file(${PROJECT_SOURCE_DIR}/host/server/cwt-serve.service.in
                       \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${unit}\" @ONLY)")
endif()
install(DIRECTORY include/hundredweight TYPE INCLUDE)
install(DIRECTORY docs/ TYPE DOC)
if(WIN32)
    install(FILES docs/windows.md DESTINATION . RENAME README.md)
endif()
if(HWT_SAMPLE)
    install(DIRECTORY ${HWT_SAMPLE}/ DESTINATION sample)
endif()

# What bash, zsh and fish complete cwt's command line by.
if(NOT WIN32)
    set(zsh_directory site-functions)
    if(HWT_DISTRIBUTION)
        set(zsh_directory vendor-completions)
    endif()
    foreach(script bash:bash-completion/completions:cwt zsh:zsh/${zsh_directory}:_cwt
                   fish:fish/vendor_completions.d:cwt.fish)
        string(REPLACE ":" ";" script ${script})
        list(POP_FRONT script shell directory name)
        install(FILES host/completions/cwt.${shell}
                DESTINATION ${CMAKE_INSTALL_DATADIR}/${directory} RENAME ${name})
    endforeach()
endif()

install(EXPORT hundredweight NAMESPACE hundredweight:: DESTINATION ${package_directory}
        FILE hundredweight-config.cmake)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/hundredweight-config-version.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/hundredweight-config-version.cmake
        DESTINATION ${package_directory})

file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/hundredweight.pc.in hundredweight.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/hundredweight.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
