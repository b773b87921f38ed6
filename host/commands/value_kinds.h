// What the values of options are, as --help names them; by these names Tab finds values.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cwt {

constexpr const char* kCodeValue = "CODE";
constexpr const char* kDirectoryValue = "DIRECTORY";
constexpr const char* kFileValue = "FILE";
constexpr const char* kCsvValue = "FILE.csv";
constexpr const char* kHtmlValue = "FILE.html";
constexpr const char* kJsonValue = "FILE.json";
constexpr const char* kLibraryValue = "LIBRARY";
constexpr const char* kProfileValue = "PROFILE";
constexpr const char* kRowsValue = "ROWS";
constexpr const char* kSetValue = "SET";

/// False of a flag.
bool WantsValue(const CLI::Option& option);
/// Whether it may be told several times.
bool IsList(const CLI::Option& option);
/// What kind of value it wants; where none is told, a word of CLI11's, such as "INT".
std::string ValueKindOf(const CLI::Option& option);
/// The values that it is limited to; empty when they are no list.
std::vector<std::string> ChoicesOf(const CLI::Option& option);

}  // namespace cwt
