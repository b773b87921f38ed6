// Declares for Visual Basic and its kin, on 32-bit Windows. Their structures are not packed, so
// that a record is an array of bytes there, with the fields' positions as constants.
#include <fmt/core.h>

#include "language.h"

namespace languages {
namespace {

const TypeNames kArgumentTypes = {
    {"const char*", "ByVal {} As String"}, {"char*", "ByVal {} As String"},
    {"int32_t", "ByVal {} As Long"},       {"int32_t*", "ByRef {} As Long"},
    {"float", "ByVal {} As Single"},       {"void*", "ByVal {} As Long"},
    {"RateContext*", "ByRef {} As Any"},   {"HostDiscountTable*", "ByRef {} As Any"},
};

/// A pointer is its address; a boolean result is one byte.
const TypeNames kResultTypes = {{"int32_t", "Long"}, {"float", "Single"},    {"char*", "Long"},
                                {"bool", "Byte"},    {"EfcRecord*", "Long"}, {"void", ""}};

/// A record of the host's own is passed as the others are; any other pointer without a type is a
/// number of the system's.
std::string ShapeOf(const Json& argument) {
    const std::string type = argument["type"];
    return type == "void*" && argument["name"] == "record" ? "ByRef {} As Any"
                                                           : NameOf(type, kArgumentTypes);
}

std::string WriteFunction(const Json& function) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        const std::string shape = ShapeOf(argument);
        // A name of the language's own may be the name of an argument in brackets.
        arguments +=
            (arguments.empty() ? "" : ", ") +
            fmt::format(fmt::runtime(shape), "[" + argument["name"].get<std::string>() + "]");
    }
    const std::string result = NameOf(function["result"], kResultTypes);
    // The editor changes the case of a name to that of any other like it; the alias stays.
    return fmt::format("Public Declare {0} {1} Lib \"hundredweight.dll\" Alias \"{1}\" ({2}){3}\n",
                       result.empty() ? "Sub" : "Function", function["name"].get<std::string>(),
                       arguments, result.empty() ? "" : " As " + result);
}

std::string WriteConstants(const Json& field, const std::string& record) {
    const std::string name = record + "_" + field["name"].get<std::string>();
    std::string text =
        fmt::format("Public Const {} As Long = {}\n", name, field["offset"]["32"].get<int>());
    if (field["type"] == "char" && !field["dimensions"].empty()) {
        text += fmt::format("Public Const {}_Width As Long = {}\n", name,
                            field["dimensions"].back().get<int>());
    }
    return text;
}

/// Its editor reads no file whose lines end as they do elsewhere.
std::string WithCarriageReturns(const std::string& text) {
    std::string lines;
    for (const char each : text) lines += each == '\n' ? "\r\n" : std::string(1, each);
    return lines;
}

}  // namespace

std::string WriteBasic(const Json& description) {
    std::string text = fmt::format(
        "Attribute VB_Name = \"Hundredweight\"\n"
        "' {}\n"
        "' For 32-bit Windows. A record is an array of bytes, passed by its first one; a constant\n"
        "' bears the name of a record and a field and is the position of its first byte; with\n"
        "' _Width behind it, the bytes of a text, or of each of its texts.\n"
        "Option Explicit\n\nPublic Const HeadersVersion As String = \"{}\"\n",
        FileNotice(description), description["version"].get<std::string>());
    for (const Json& record : description["records"]) {
        const std::string name = record["name"];
        text += fmt::format("\nPublic Const {}_Size As Long = {}\n", name,
                            record["size"]["32"].get<int>());
        for (const Json& field : record["fields"]) {
            text += WriteConstants(field, name);
        }
    }
    text += '\n';
    for (const Json& function : description["functions"]) {
        if (function["library"] == "hundredweight") text += WriteFunction(function);
    }
    return WithCarriageReturns(text);
}

}  // namespace languages
