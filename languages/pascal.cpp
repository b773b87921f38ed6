// A unit for Free Pascal and Delphi.
#include <fmt/core.h>

#include "language.h"

namespace languages {
namespace {

const TypeNames kFieldTypes = {
    {"char", "AnsiChar"},         {"unsigned char", "Byte"}, {"uint8_t", "Byte"},
    {"int16_t", "SmallInt"},      {"int32_t", "LongInt"},    {"float", "Single"},
    {"FILE*", "Pointer"},         {"void*", "Pointer"},      {"unsigned char*", "PByte"},
    {"EfcRecord*", "PEfcRecord"},
};

const TypeNames kArgumentTypes = {
    {"const char*", "PAnsiChar"},
    {"char*", "PAnsiChar"},
    {"int32_t", "LongInt"},
    {"int32_t*", "PLongInt"},
    {"uint32_t", "LongWord"},
    {"float", "Single"},
    {"void*", "Pointer"},
    {"RateContext*", "PRateContext"},
    {"HostDiscountTable*", "PHostDiscountTable"},
    {"EfcRecord*", "PEfcRecord"},
    {"bool", "Boolean"},
    {"MessageBoxHandler", "TMessageBoxHandler"},
    {"QuitHandler", "TQuitHandler"},
};

constexpr const char* kBeginning = R"({{ {} }}
unit hundredweight;
{{$IFDEF FPC}}{{$MODE DELPHI}}{{$ENDIF}}

interface

const
  HeadersVersion = '{}';
  HundredweightLibrary = {{$IFDEF MSWINDOWS}}'hundredweight.dll'{{$ELSE}}'hundredweight'{{$ENDIF}};

type
)";

std::string WriteField(const Json& field, bool of_records) {
    std::string bounds;
    for (const Json& dimension : field["dimensions"]) {
        bounds += fmt::format("{}0..{}", bounds.empty() ? "" : ", ", dimension.get<int>() - 1);
    }
    const std::string type = field["type"];
    return fmt::format("{}: {}{};", field["name"].get<std::string>(),
                       bounds.empty() ? "" : fmt::format("array[{}] of ", bounds),
                       of_records ? type : NameOf(type, kFieldTypes));
}

/// A variant ends a record in this language: bytes that have names are a record of their own.
std::string OverlaidName(const Json& record, const Json& field) {
    return record["name"].get<std::string>() + field["name"].get<std::string>();
}

std::string WriteOverlaid(const Json& record, const Json& field, const Json& overlays) {
    Json bytes = field;
    bytes["name"] = "Bytes";
    std::string text = fmt::format(
        "  {} = packed record\n    case Integer of\n      0: ({});\n"
        "      1: (\n",
        OverlaidName(record, field), WriteField(bytes, false));
    for (const Json& each : overlays) text += "        " + WriteField(each, false) + "\n";
    return text + "      );\n  end;\n\n";
}

std::string WriteRecord(const Json& description, const Json& record) {
    const std::string name = record["name"];
    std::string text, overlaid;
    for (const Json& field : record["fields"]) {
        if (field.contains("overlays")) continue;
        const Json overlays = OverlaysOf(record, field);
        if (!overlays.empty()) {
            overlaid += WriteOverlaid(record, field, overlays);
            text += fmt::format("    {}: {};\n", field["name"].get<std::string>(),
                                OverlaidName(record, field));
        } else {
            const bool of_records = FindRecord(description, field["type"]) != nullptr;
            text += "    " + WriteField(field, of_records) + "\n";
        }
    }
    return fmt::format("{0}  P{1} = ^{1};\n  {1} = packed record\n{2}  end;\n\n", overlaid, name,
                       text);
}

/// The words of a function with a name, or of a type without.
std::string WriteHead(const Json& function, const std::string& name) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        std::string argument_name = argument["name"];
        if (argument_name == "record") argument_name += '_';
        arguments += fmt::format("{}{}: {}", arguments.empty() ? "" : "; ", argument_name,
                                 NameOf(argument["type"], kArgumentTypes));
    }
    const std::string result = function["result"];
    return result == "void"
               ? fmt::format("procedure{}({})", name, arguments)
               : fmt::format("function{}({}): {}", name, arguments, NameOf(result, kArgumentTypes));
}

std::string WriteFunction(const Json& function) {
    const std::string name = function["name"];
    const bool library = function["library"] == "hundredweight";
    const std::string head = WriteHead(function, " " + name);
    if (!library) {
        return fmt::format("{0}; cdecl; external 'hundredweight-platform' name '{1}';\n", head,
                           name);
    }
    return fmt::format(
        "{0}; {{$IFDEF MSWINDOWS}}stdcall{{$ELSE}}cdecl{{$ENDIF}};\n"
        "  external HundredweightLibrary name '{1}';\n",
        head, name);
}

}  // namespace

std::string WritePascal(const Json& description) {
    std::string text = fmt::format(fmt::runtime(kBeginning), FileNotice(description),
                                   description["version"].get<std::string>());
    for (const Json& record : description["records"]) text += WriteRecord(description, record);
    for (const Json& handler : description["handlers"]) {
        text += fmt::format("  T{} = {}; cdecl;\n", handler["name"].get<std::string>(),
                            WriteHead(handler, ""));
    }
    text += '\n';
    std::string lent = "{$IFNDEF MSWINDOWS}\n";
    for (const Json& function : description["functions"]) {
        (function["library"] == "hundredweight" ? text : lent) += WriteFunction(function);
    }
    return text + lent + "{$ENDIF}\n\nimplementation\n\nend.\n";
}

}  // namespace languages
