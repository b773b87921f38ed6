// What the values of options are, as --help names them; by these names Tab finds values.
#pragma once

namespace cwt {

constexpr const char* kDirectoryValue = "DIRECTORY";
constexpr const char* kFileValue = "FILE";
constexpr const char* kCsvValue = "FILE.csv";
constexpr const char* kHtmlValue = "FILE.html";
constexpr const char* kJsonValue = "FILE.json";
constexpr const char* kLibraryValue = "LIBRARY";
constexpr const char* kProfileValue = "PROFILE";
constexpr const char* kRowsValue = "ROWS";
constexpr const char* kSetValue = "SET";

}  // namespace cwt
