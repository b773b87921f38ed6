// A Python module upon ctypes.
#include <fmt/core.h>

#include "language.h"

namespace languages {
namespace {

const TypeNames kTypes = {
    {"char", "c_char"},
    {"unsigned char", "c_ubyte"},
    {"uint8_t", "c_uint8"},
    {"int16_t", "c_int16"},
    {"int32_t", "c_int32"},
    {"uint32_t", "c_uint32"},
    {"float", "c_float"},
    {"FILE*", "c_void_p"},
    {"void*", "c_void_p"},
    {"bool", "c_bool"},
    {"void", "None"},
    {"const char*", "c_char_p"},
    {"char*", "POINTER(c_char)"},
    {"int32_t*", "POINTER(c_int32)"},
    // A number: a pointer that is read is the field itself, and changes with it.
    {"unsigned char*", "c_void_p"},
    {"EfcRecord*", "POINTER(EfcRecord)"},
    {"RateContext*", "POINTER(RateContext)"},
    {"HostDiscountTable*", "POINTER(HostDiscountTable)"},
    {"MessageBoxHandler", "c_void_p"},
    {"QuitHandler", "c_void_p"},
};

constexpr const char* kBeginning = R"("""{}

Texts are bytes. load(PATH) gives the library with the types of its functions.
"""
import ctypes
import os
from ctypes import (CFUNCTYPE, POINTER, Structure, Union, c_bool, c_char, c_char_p, c_float, c_int16,
                    c_int32, c_ubyte, c_uint8, c_uint32, c_void_p)

HEADERS_VERSION = "{}"
)";

constexpr const char* kEnd = R"(

def load(path, functions=FUNCTIONS):
    """The library at a path, or of a name that the system finds."""
    library = (ctypes.WinDLL if os.name == "nt" and functions is FUNCTIONS else ctypes.CDLL)(path)
    for name, (result, arguments) in functions.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library
)";

std::string WriteField(const Json& field, bool of_records) {
    std::string type =
        of_records ? field["type"].get<std::string>() : NameOf(field["type"], kTypes);
    const Json& dimensions = field["dimensions"];
    for (auto each = dimensions.rbegin(); each != dimensions.rend(); ++each) {
        const bool several = type.find('*') != std::string::npos;
        type = fmt::format(fmt::runtime(several ? "({}) * {}" : "{} * {}"), type, each->get<int>());
    }
    return fmt::format("        (\"{}\", {}),\n", field["name"].get<std::string>(), type);
}

/// A class whose members named in `anonymous` lend it their own.
std::string WriteClass(const std::string& name, const char* base, const std::string& anonymous,
                       const std::string& fields) {
    return fmt::format(
        "\n\nclass {}({}):\n    _pack_ = 1\n{}    _fields_ = [\n{}    ]\n", name, base,
        anonymous.empty() ? "" : fmt::format("    _anonymous_ = ({})\n", anonymous), fields);
}

std::string WriteRecord(const Json& description, const Json& record) {
    const std::string name = record["name"];
    std::string text, fields, anonymous;
    for (const Json& field : record["fields"]) {
        if (field.contains("overlays")) continue;
        const bool of_records = FindRecord(description, field["type"]) != nullptr;
        const Json overlays = OverlaysOf(record, field);
        if (overlays.empty()) {
            fields += WriteField(field, of_records);
            continue;
        }
        std::string named;
        for (const Json& each : overlays) named += WriteField(each, false);
        const std::string overlay = fmt::format("_{}_{}", name, field["name"].get<std::string>());
        text += WriteClass(overlay + "_named", "Structure", "", named);
        text += WriteClass(
            overlay, "Union", "\"_named\",",
            WriteField(field, false) + fmt::format("        (\"_named\", {}_named),\n", overlay));
        fields += fmt::format("        (\"{0}\", {0}),\n", overlay);
        anonymous += fmt::format("\"{}\", ", overlay);
    }
    return text + WriteClass(name, "Structure", anonymous, fields);
}

std::string WriteArguments(const Json& function) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        arguments += (arguments.empty() ? "" : ", ") + NameOf(argument["type"], kTypes);
    }
    return arguments;
}

std::string WriteHandlers(const Json& description) {
    std::string text = "\n\n";
    for (const Json& handler : description["handlers"]) {
        text += fmt::format("{} = CFUNCTYPE({}, {})\n", handler["name"].get<std::string>(),
                            NameOf(handler["result"], kTypes), WriteArguments(handler));
    }
    return text;
}

std::string WriteFunctions(const Json& description, const char* library, const char* name) {
    std::string text = fmt::format("\n\n{} = {{\n", name);
    for (const Json& function : description["functions"]) {
        if (function["library"] != library) continue;
        text += fmt::format("    \"{}\": ({}, [{}]),\n", function["name"].get<std::string>(),
                            NameOf(function["result"], kTypes), WriteArguments(function));
    }
    return text + "}\n";
}

}  // namespace

std::string WritePython(const Json& description) {
    std::string text = fmt::format(fmt::runtime(kBeginning), FileNotice(description),
                                   description["version"].get<std::string>());
    for (const Json& record : description["records"]) text += WriteRecord(description, record);
    text += WriteHandlers(description);
    text += WriteFunctions(description, "hundredweight", "FUNCTIONS");
    text += WriteFunctions(description, "hundredweight-platform", "PLATFORM_FUNCTIONS");
    return text + kEnd;
}

}  // namespace languages
