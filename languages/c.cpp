// C, which a compiler holds against the headers.
#include <fmt/core.h>

#include "language.h"

namespace languages {
namespace {

/// A declaration again, with which the header's must agree.
std::string Declare(const Json& function, const std::string& name) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        arguments += (arguments.empty() ? "" : ", ") + argument["type"].get<std::string>();
    }
    return fmt::format("{} {}({});\n", function["result"].get<std::string>(), name,
                       arguments.empty() ? "void" : arguments);
}

}  // namespace

std::string WriteC(const Json& description) {
    std::string text = fmt::format(
        "/* {} What it says of them holds when this compiles. */\n"
        "#include <hundredweight/exports.h>\n"
        "#include <hundredweight/platform.h>\n"
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
    for (const Json& handler : description["handlers"]) {
        text += "typedef " + Declare(handler, "(*" + handler["name"].get<std::string>() + ")");
    }
    for (const Json& function : description["functions"]) {
        const bool library = function["library"] == "hundredweight";
        text +=
            Declare(function, (library ? "HWT_CALL " : "") + function["name"].get<std::string>());
    }
    return text;
}

}  // namespace languages
