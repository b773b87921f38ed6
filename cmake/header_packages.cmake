# CLI11, nlohmann-json and {fmt} from their headers, so that the same packages serve every target.
add_library(hwt_header_packages INTERFACE)
if(CMAKE_CROSSCOMPILING)
    # The build machine's other headers must not be seen.
    foreach(package CLI fmt nlohmann)
        file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
        file(CREATE_LINK /usr/include/${package} ${CMAKE_BINARY_DIR}/packages/${package} SYMBOLIC)
    endforeach()
    target_include_directories(hwt_header_packages SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/packages)
endif()

add_library(hwt_fmt STATIC cmake/fmt.cpp)
target_link_libraries(hwt_fmt PRIVATE hwt_compile_options hwt_unsanitized)
if(CMAKE_CROSSCOMPILING)
    target_include_directories(hwt_fmt SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/packages)
endif()
target_link_libraries(hwt_header_packages INTERFACE hwt_fmt)
