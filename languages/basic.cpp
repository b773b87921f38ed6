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

std::string WriteFunction(const Json& function) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        const std::string shape = NameOf(argument["type"], kArgumentTypes);
        // A name of the language's own may be the name of an argument in brackets.
        arguments +=
            (arguments.empty() ? "" : ", ") +
            fmt::format(fmt::runtime(shape), "[" + argument["name"].get<std::string>() + "]");
    }
    const std::string result = NameOf(function["result"], kResultTypes);
    return fmt::format("Public Declare {} {} Lib \"hundredweight.dll\" ({}){}\n",
                       result.empty() ? "Sub" : "Function", function["name"].get<std::string>(),
                       arguments, result.empty() ? "" : " As " + result);
}

}  // namespace

std::string WriteBasic(const Json& description) {
    std::string text = fmt::format(
        "Attribute VB_Name = \"Hundredweight\"\n"
        "' {}\n"
        "' For 32-bit Windows. A record is an array of bytes, passed by its first one; a constant\n"
        "' bears the name of a record and a field and is the position of its first byte.\n"
        "Option Explicit\n\nPublic Const HeadersVersion As String = \"{}\"\n",
        FileNotice(description), description["version"].get<std::string>());
    for (const Json& record : description["records"]) {
        const std::string name = record["name"];
        text += fmt::format("\nPublic Const {}_Size As Long = {}\n", name,
                            record["size"]["32"].get<int>());
        for (const Json& field : record["fields"]) {
            text += fmt::format("Public Const {}_{} As Long = {}\n", name,
                                field["name"].get<std::string>(), field["offset"]["32"].get<int>());
        }
    }
    text += '\n';
    for (const Json& function : description["functions"]) {
        if (function["library"] == "hundredweight") text += WriteFunction(function);
    }
    return text;
}

}  // namespace languages
