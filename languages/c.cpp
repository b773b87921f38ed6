// C, which a compiler holds against the headers.
#include <fmt/core.h>

#include "language.h"

namespace languages {

std::string WriteC(const Json& description) {
    std::string text = fmt::format(
        "/* {} The layout that it states holds when this compiles. */\n"
        "#include <hundredweight/exports.h>\n"
        "#include <stddef.h>\n\n"
        "#define WIDER ((int)sizeof(void*) - 4)\n"
        "#define FIELD(record, field, offset, size) \\\n"
        "    _Static_assert(offsetof(record, field) == (offset) && \\\n"
        "                       sizeof(((record*)0)->field) == (size), #record \".\" #field);\n\n",
        FileNotice(description));
    for (const Json& record : description["records"]) {
        const std::string name = record["name"];
        text += fmt::format("_Static_assert(sizeof({0}) == {1}, \"{0}\");\n", name,
                            ByWidth(record["size"], "WIDER"));
        for (const Json& field : record["fields"]) {
            text += fmt::format("FIELD({}, {}, {}, {} * ({}))\n", name,
                                field["name"].get<std::string>(), ByWidth(field["offset"], "WIDER"),
                                field["count"].get<int>(), ByWidth(field["width"], "WIDER"));
        }
    }
    return text;
}

}  // namespace languages
