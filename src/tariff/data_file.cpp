#include "tariff/data_file.h"

#include <algorithm>

#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr std::size_t kLongestBaseName = 8;

/// Whether a character may stand in a file's name: none that leads out of the directory on any
/// system, and no control character.
bool MayBeInName(char character) {
    return static_cast<unsigned char>(character) >= ' ' && character != '/' && character != '\\' &&
           character != ':' && character != '\x7F';
}

/// Directory and name, without the blanks that pad short names and that the files' home system
/// ignores. Empty when the name is empty or none of a file's, or when the path does not fit.
PathText JoinPath(std::string_view directory, std::string_view name) {
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    if (!std::all_of(name.begin(), name.end(), MayBeInName)) return {};
    if (name.empty() || directory.size() + name.size() > kLongestPath) return {};
    return PathText(directory).Append(name);
}

/// FileBase and extension, empty when the base name does not fit.
InlineText<16> ShortName(const RateContext& context, std::string_view extension) {
    const std::string_view base_name = TerminatedText(context.FileBase);
    if (base_name.size() > kLongestBaseName) return {};
    return InlineText<16>(base_name).Append(extension);
}

}  // namespace

OpenFile OpenForReading(const PathText& path) {
    platform::FileState state;
    const int16_t handle =
        path.empty() ? int16_t{-1} : platform::OpenForReading(path.c_str(), &state);
    return OpenFile(handle, state);
}

PathText PathInDataDir(const RateContext& context, std::string_view file_name) {
    return JoinPath(TerminatedText(context.DataDir), file_name);
}

PathText PathInUserDir(const RateContext& context, std::string_view file_name) {
    return JoinPath(TerminatedText(context.UserDir), file_name);
}

OpenFile FindInDataDir(const RateContext& context, std::string_view file_name) {
    return OpenForReading(PathInDataDir(context, file_name));
}

OpenFile OpenDataFile(const RateContext& context, std::string_view extension) {
    if (extension == ".DIS") {
        OpenFile file = OpenForReading(SetPathInCurrentDir(context, extension));
        if (file) return file;
    }
    return OpenForReading(SetPathInDataDir(context, extension));
}

bool HasDataFile(const RateContext& context, std::string_view extension) {
    return static_cast<bool>(OpenDataFile(context, extension));
}

OpenFile FindUserFile(const RateContext& context, std::string_view extension) {
    OpenFile file = OpenForReading(SetPathInUserDir(context, extension));
    const bool one_directory = TerminatedText(context.UserDir) == TerminatedText(context.DataDir);
    if (file || one_directory) return file;
    return OpenForReading(SetPathInDataDir(context, extension));
}

std::FILE* OpenTextFile(const RateContext& context, std::string_view extension) {
    const PathText path = SetPathInDataDir(context, extension);
    return path.empty() ? nullptr : platform::OpenStreamForReading(path.c_str());
}

PathText SetPathInCurrentDir(const RateContext& context, std::string_view extension) {
    return JoinPath("", ShortName(context, extension));
}

PathText SetPathInDataDir(const RateContext& context, std::string_view extension) {
    return PathInDataDir(context, ShortName(context, extension));
}

PathText SetPathInUserDir(const RateContext& context, std::string_view extension) {
    return PathInUserDir(context, ShortName(context, extension));
}

}  // namespace hundredweight
