# Installs a build and lets a host outside the tree find it by its CMake package and by pkg-config:
# BUILD, PREFIX, LIBDIR, SOURCE, COMPILER, FLAGS, TOOLCHAIN, EMULATOR, OBJDUMP, EXPECTED, VERSION.
cmake_minimum_required(VERSION 3.25)
function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${PREFIX})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX})

set(outside ${PREFIX}/outside)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/../installed -B ${outside} -G Ninja
    -DSOURCE=${SOURCE} -DVERSION=${VERSION} -DCMAKE_PREFIX_PATH=${PREFIX}
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_C_FLAGS=${FLAGS}
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${PREFIX}/bin)
run(${CMAKE_COMMAND} --build ${outside})

set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
run(pkg-config --cflags --libs hundredweight)
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
separate_arguments(found UNIX_COMMAND "${output}")
if(NOT TOOLCHAIN)
    list(APPEND found -Wl,-rpath,${PREFIX}/${LIBDIR})
endif()
run(${COMPILER} ${flags} ${SOURCE} ${found} -o ${PREFIX}/bin/by_pkg_config)

# Both run, and so does the command, wherever the user is.
file(GLOB CWT ${PREFIX}/bin/cwt*)
set(DIRECTORY ${PREFIX}/sample)
foreach(name by_package by_pkg_config)
    file(GLOB EXAMPLE ${PREFIX}/bin/${name}*)
    include(${CMAKE_CURRENT_LIST_DIR}/run_example.cmake)
endforeach()

# All tell the same version.
run(pkg-config --modversion hundredweight)
string(APPEND versions "${output}")
run(${EMULATOR} ${CWT} --version)
string(REPLACE "\r\n" "\n" output "${output}")
string(APPEND versions "${output}")
string(CONCAT expected
    "^${VERSION}\ncwt \\(Hundredweight\\) ${VERSION}\nlibhundredweight ${VERSION}\n")
if(NOT versions MATCHES "${expected}")
    message(FATAL_ERROR "pkg-config and cwt tell versions ${versions}")
endif()
if(TOOLCHAIN)
    file(STRINGS ${PREFIX}/bin/hundredweight.dll resource ENCODING UTF-16LE REGEX "^${VERSION}$")
else()
    # No loader looks into the current directory, neither here nor in the build tree.
    file(GLOB files ${PREFIX}/bin/* ${PREFIX}/${LIBDIR}/*.so ${BUILD}/bin/* ${BUILD}/${LIBDIR}/*.so)
    foreach(file ${files})
        run(${OBJDUMP} -p ${file})
        if(output MATCHES "R(UN)?PATH +([^\n]*:)?[:\n]")
            message(FATAL_ERROR "${file} has an empty ${CMAKE_MATCH_0}")
        endif()
    endforeach()
    run(${OBJDUMP} -p ${PREFIX}/${LIBDIR}/libhundredweight.so.${VERSION})
    string(REGEX REPLACE "[.][0-9]+$" "" interface ${VERSION})
    string(REGEX MATCH "SONAME +libhundredweight[.]so[.]${interface}\n" resource "${output}")
endif()
if(NOT resource)
    message(FATAL_ERROR "the library does not tell version ${VERSION}")
endif()
