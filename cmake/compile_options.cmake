# Warnings, sanitizers and floating point, alike for every target of this project.
option(HWT_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(HWT_SANITIZE_HOST "With sanitizers, build the command and the sample data with them too" ON)
option(HWT_FUZZ "Build the fuzz targets, and what they call instrumented for them" OFF)
option(HWT_BENCH "Build the benchmark" OFF)
option(HWT_PYTHON "Build the Python package" OFF)

add_library(hwt_compile_options INTERFACE)
target_compile_options(hwt_compile_options INTERFACE
    -Wall -Wextra -Wconversion -Wshadow -Werror
    # Single precision means single precision on every target.
    -ffp-contract=off
    $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:-msse2;-mfpmath=sse>
    # g++ 12 takes the appending of a short text for an overlapping copy.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Files may be longer than 2 GiB on 32-bit systems too.
target_compile_definitions(hwt_compile_options INTERFACE _FILE_OFFSET_BITS=64)
if(WIN32)
    # Hosts have no run-time DLL of this compiler. A DLL does not tell when it was linked.
    target_link_options(hwt_compile_options INTERFACE -static -Wl,--no-insert-timestamp)
endif()
if(HWT_SANITIZE)
    target_compile_options(hwt_compile_options INTERFACE
        -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_link_options(hwt_compile_options INTERFACE
        -fsanitize=address,undefined,float-cast-overflow)
else()
    target_link_options(hwt_compile_options INTERFACE -Wl,--no-undefined)
endif()

if(HWT_FUZZ)
    target_compile_options(hwt_compile_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Leaves the sanitizers out of a target that has no part in what they look for, since they make the
# large header libraries slow to compile. Linked last, this has the last word.
add_library(hwt_unsanitized INTERFACE)
target_compile_options(hwt_unsanitized INTERFACE -fno-sanitize=all)
function(hwt_sanitize_host target)
    if(HWT_SANITIZE AND NOT HWT_SANITIZE_HOST)
        target_link_libraries(${target} PRIVATE hwt_unsanitized)
    endif()
endfunction()
