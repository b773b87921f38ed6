// C#: structures of explicit layout, and the functions by P/Invoke.
#include <fmt/core.h>

#include "language.h"

namespace languages {
namespace {

const TypeNames kFieldTypes = {{"char", "byte"},     {"unsigned char", "byte"}, {"uint8_t", "byte"},
                               {"int16_t", "short"}, {"int32_t", "int"},        {"float", "float"}};

const TypeNames kArgumentTypes = {
    {"const char*", "byte[]"},
    {"char*", "byte*"},
    {"int32_t", "int"},
    {"int32_t*", "int*"},
    {"uint32_t", "uint"},
    {"float", "float"},
    {"void*", "IntPtr"},
    {"RateContext*", "RateContext*"},
    {"HostDiscountTable*", "HostDiscountTable*"},
    {"MessageBoxHandler", "MessageBoxHandler"},
    {"QuitHandler", "QuitHandler"},
};

TypeNames ResultTypes() {
    TypeNames names = kArgumentTypes;
    names["void"] = "void";
    names["bool"] = "bool";
    names["const char*"] = "byte*";
    names["EfcRecord*"] = "EfcRecord*";
    return names;
}

constexpr const char* kIntroduction = R"(// {notice}
//
// A program is compiled for 64-bit machines, or with HWT_32BIT defined for 32-bit ones, and never
// for both: the pointers in a RateContext move what follows them. Records lie in memory that is not
// the run-time's own. Texts are Latin-1; one that is not is refused. Paths are as the system
// has them.
using System;
using System.Runtime.InteropServices;
using System.Text;

namespace Hundredweight {{

/// <summary>Texts in fields of fixed width.</summary>
public static unsafe class Field {{
#if HWT_32BIT
    internal const int Wider = 0;
#else
    internal const int Wider = 4;
#endif

    static readonly Encoding Latin1 = Encoding.GetEncoding(
        28591, EncoderFallback.ExceptionFallback, DecoderFallback.ExceptionFallback);

    /// <summary>Whether records are laid out for the process that runs.</summary>
    public static bool FitsProcess {{ get {{ return IntPtr.Size == 4 + Wider; }} }}

    /// <summary>The text of a field, up to its first zero byte; without a width, a terminated
    /// text.</summary>
    public static string Get(byte* field, int width = int.MaxValue) {{
        int size = 0;
        while (size < width && field[size] != 0) ++size;
        byte[] bytes = new byte[size];
        Marshal.Copy((IntPtr)field, bytes, 0, size);
        return Latin1.GetString(bytes);
    }}

    /// <summary>Fills a field with a text and zero bytes; one that does not fit is refused. One as
    /// wide as the field has no terminator.</summary>
    public static void Put(byte* field, int width, string text) {{
        byte[] bytes = Bytes(text, width);
        if (bytes.Length > width) throw new ArgumentException("too long: " + text);
        Marshal.Copy(bytes, 0, (IntPtr)field, width);
    }}

    /// <summary>An argument: a text and its zero byte, of at least so many bytes.</summary>
    public static byte[] Bytes(string text, int width = 0) {{
        byte[] bytes = new byte[Math.Max(text.Length + 1, width)];
        Latin1.GetBytes(text, 0, text.Length, bytes, 0);
        return bytes;
    }}

    /// <summary>Fills a directory's field; one that leaves no terminator is refused.</summary>
    public static void PutPath(byte* field, int width, string path) {{
        byte[] bytes = PathBytes(path);
        if (bytes.Length > width) throw new ArgumentException("too long: " + path);
        Array.Resize(ref bytes, width);
        Marshal.Copy(bytes, 0, (IntPtr)field, width);
    }}

    /// <summary>A path as an argument, in the characters of the system's own paths.</summary>
    public static byte[] PathBytes(string path) {{
        IntPtr text = Marshal.StringToHGlobalAnsi(path);
        int size = 0;
        while (((byte*)text)[size] != 0) ++size;
        byte[] bytes = new byte[size + 1];
        Marshal.Copy(text, bytes, 0, size);
        Marshal.FreeHGlobal(text);
        return bytes;
    }}
}}
)";

std::string WriteField(const Json& field, const std::string& record, bool of_records) {
    const std::string name = field["name"], type = field["type"];
    const std::string place = ByWidth(field["offset"], "Field.Wider");
    const bool single = field["dimensions"].empty();
    const int count = field["count"];
    if (type.ends_with('*')) {
        return fmt::format("    [FieldOffset({})] public IntPtr {};\n", place, name);
    }
    const std::string element = of_records ? type : NameOf(type, kFieldTypes);
    if (single) return fmt::format("    [FieldOffset({})] public {} {};\n", place, element, name);
    if (!of_records) {
        // The last dimension is the width of a text.
        const std::string width = type != "char"
                                      ? ""
                                      : fmt::format("    public const int {}Width = {};\n", name,
                                                    field["dimensions"].back().get<int>());
        return fmt::format("    [FieldOffset({})] public fixed {} {}[{}];\n{}", place, element,
                           name, count, width);
    }
    return fmt::format(
        "    [FieldOffset({0})] public fixed byte {1}[{2} * {3}];\n"
        "    public static {4}* {1}At({5}* record, int index) {{\n"
        "        if (index < 0 || index >= {2}) throw new IndexOutOfRangeException();\n"
        "        return ({4}*)record->{1} + index;\n"
        "    }}\n",
        place, name, count, field["width"]["32"].get<int>(), type, record);
}

/// The names of the types of what a handler is called with.
TypeNames HandedTypes() {
    TypeNames names = kArgumentTypes;
    names["const char*"] = "byte*";
    return names;
}

std::string WriteArguments(const Json& function, const TypeNames& types) {
    std::string arguments;
    for (const Json& argument : function["arguments"]) {
        arguments +=
            fmt::format("{}{} {}", arguments.empty() ? "" : ", ", NameOf(argument["type"], types),
                        argument["name"].get<std::string>());
    }
    return arguments;
}

std::string WriteHandler(const Json& handler, const TypeNames& results) {
    return fmt::format(
        "\n[UnmanagedFunctionPointer(CallingConvention.Cdecl)]\n"
        "public unsafe delegate {} {}({});\n",
        NameOf(handler["result"], results), handler["name"].get<std::string>(),
        WriteArguments(handler, HandedTypes()));
}

std::string WriteFunction(const Json& function, const TypeNames& results) {
    const std::string result = NameOf(function["result"], results);
    return fmt::format(
        "    [DllImport(\"{}\", ExactSpelling = true)]\n{}"
        "    public static extern {} {}({});\n",
        function["library"].get<std::string>(),
        result == "bool" ? "    [return: MarshalAs(UnmanagedType.I1)]\n" : "", result,
        function["name"].get<std::string>(), WriteArguments(function, kArgumentTypes));
}

}  // namespace

std::string WriteCSharp(const Json& description) {
    std::string text =
        fmt::format(fmt::runtime(kIntroduction), fmt::arg("notice", FileNotice(description)));
    for (const Json& record : description["records"]) {
        const std::string name = record["name"];
        text += fmt::format(
            "\n[StructLayout(LayoutKind.Explicit, Pack = 1, Size = {})]\n"
            "public unsafe struct {} {{\n",
            ByWidth(record["size"], "Field.Wider"), name);
        for (const Json& field : record["fields"]) {
            text += WriteField(field, name, FindRecord(description, field["type"]) != nullptr);
        }
        text += "}\n";
    }
    const TypeNames results = ResultTypes();
    for (const Json& handler : description["handlers"]) text += WriteHandler(handler, results);
    text += fmt::format(
        "\n/// <summary>The functions. On Windows hundredweight-platform is no DLL.</summary>\n"
        "public static unsafe class Library {{\n"
        "    public const string HeadersVersion = \"{}\";\n",
        description["version"].get<std::string>());
    for (const Json& function : description["functions"]) text += WriteFunction(function, results);
    return text + "}\n\n}\n";
}

}  // namespace languages
