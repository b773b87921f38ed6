# CLI11, nlohmann-json and {fmt} as headers alone, so that the same packages serve every target.
add_library(hwt_header_packages INTERFACE)
target_compile_definitions(hwt_header_packages INTERFACE FMT_HEADER_ONLY)
if(CMAKE_CROSSCOMPILING)
    # The build machine's other headers must not be seen.
    foreach(package CLI fmt nlohmann)
        file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
        file(CREATE_LINK /usr/include/${package} ${CMAKE_BINARY_DIR}/packages/${package} SYMBOLIC)
    endforeach()
    target_include_directories(hwt_header_packages SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/packages)
endif()
