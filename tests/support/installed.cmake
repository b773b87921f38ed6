# Installs a build and lets a host outside the tree find it by its CMake package and by pkg-config:
# BUILD, PREFIX, SOURCE, COMPILER, FLAGS, TOOLCHAIN, EMULATOR, EXPECTED, VERSION.
cmake_minimum_required(VERSION 3.25)
function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${PREFIX})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX})

set(outside ${PREFIX}/outside)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/../installed -B ${outside} -G Ninja
    -DSOURCE=${SOURCE} -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}
    -DCMAKE_C_FLAGS=${FLAGS}
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${PREFIX}/bin)
run(${CMAKE_COMMAND} --build ${outside})

set(ENV{PKG_CONFIG_PATH} ${PREFIX}/lib/pkgconfig)
run(pkg-config --cflags --libs hundredweight)
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
separate_arguments(found UNIX_COMMAND "${output}")
run(${COMPILER} ${flags} ${SOURCE} ${found} -o ${PREFIX}/bin/by_pkg_config.exe)
run(pkg-config --modversion hundredweight)
if(NOT output STREQUAL "${VERSION}\n")
    message(FATAL_ERROR "pkg-config knows version ${output}")
endif()

set(ENV{LD_LIBRARY_PATH} ${PREFIX}/lib)
file(GLOB CWT ${PREFIX}/bin/cwt*)
set(DIRECTORY ${PREFIX}/sample)
file(GLOB hosts ${PREFIX}/bin/by_*)
foreach(EXAMPLE ${hosts})
    include(${CMAKE_CURRENT_LIST_DIR}/run_example.cmake)
endforeach()
run(${EMULATOR} ${CWT} --version)
if(NOT output MATCHES "^${VERSION}[\r\n]")
    message(FATAL_ERROR "cwt is of version ${output}")
endif()
