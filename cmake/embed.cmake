# Files within a program. hwt_embed(TARGET NAME [FROM FOLDER] FILE...) makes the static library
# TARGET; <TARGET_files.h> declares cwt::NAME, a span of EmbeddedFile in the order of the files. Their
# names are those within the folder, or have none.
#
# The same file is the script that writes them, when it is run with TO, NAME, FROM and FILES.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(HWT_EMBED_SCRIPT ${CMAKE_CURRENT_LIST_FILE})
    function(hwt_embed target name)
        cmake_parse_arguments(PARSE_ARGV 2 embed "" FROM "")
        set(to ${CMAKE_CURRENT_BINARY_DIR}/${target})
        # Known before anything is built, to those who only look at the sources.
        file(CONFIGURE OUTPUT ${to}/${target}_files.h CONTENT "#pragma once

#include <span>

#include \"files/embedded_file.h\"

namespace cwt {
extern const std::span<const EmbeddedFile> ${name};
}
")
        list(JOIN embed_UNPARSED_ARGUMENTS "|" files)
        add_custom_command(OUTPUT ${to}/${target}_files.cpp
            COMMAND ${CMAKE_COMMAND} -DTO=${to}/${target}_files -DNAME=${name} "-DFILES=${files}"
                    -DFROM=${embed_FROM} -P ${HWT_EMBED_SCRIPT}
            DEPENDS ${embed_UNPARSED_ARGUMENTS} ${HWT_EMBED_SCRIPT} VERBATIM)
        add_library(${target} STATIC ${to}/${target}_files.cpp)
        target_include_directories(${target}
            PUBLIC ${to} ${PROJECT_SOURCE_DIR}/host)
        target_link_libraries(${target} PRIVATE hwt_compile_options)
    endfunction()
    return()
endif()

set(type_html "text/html; charset=utf-8")
set(type_css "text/css; charset=utf-8")
set(type_js "text/javascript; charset=utf-8")
set(type_json "application/json")
set(type_csv "text/csv; charset=utf-8")
set(type_txt "text/plain; charset=utf-8")
set(type_md "text/markdown; charset=utf-8")
set(type_svg "image/svg+xml")
set(type_png "image/png")
set(type_webmanifest "application/manifest+json")

string(REPLACE "|" ";" FILES "${FILES}")
get_filename_component(header ${TO}.h NAME)
set(arrays "")
set(entries "")
set(number 0)
foreach(file IN LISTS FILES)
    if(FROM)
        file(RELATIVE_PATH name ${FROM} ${file})
    else()
        get_filename_component(name ${file} NAME)
    endif()
    get_filename_component(extension ${file} LAST_EXT)
    string(SUBSTRING ${extension} 1 -1 extension)
    if(NOT DEFINED type_${extension})
        message(FATAL_ERROR "${file}: no type is known for its name")
    endif()
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    # One more byte, for an array cannot be empty.
    string(APPEND arrays "const unsigned char kBytes${number}[] = {${bytes}0};\n")
    string(APPEND entries
        "    {\"${name}\", \"${type_${extension}}\",\n"
        "     {reinterpret_cast<const char*>(kBytes${number}), sizeof kBytes${number} - 1}},\n")
    math(EXPR number "${number} + 1")
endforeach()

file(WRITE ${TO}.cpp "#include \"${header}\"

namespace cwt {
namespace {

${arrays}
const EmbeddedFile kFiles[] = {
${entries}    {},
};

}  // namespace

const std::span<const EmbeddedFile> ${NAME}(kFiles, ${number});

}  // namespace cwt
")
