#include "tariff/data_file.h"

#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr std::size_t kLongestBaseName = 8;
constexpr std::size_t kLongestPath = 259;

OpenFile OpenPath(const std::string& path) {
    int64_t length = 0;
    const bool fits = !path.empty() && path.size() <= kLongestPath;
    const int16_t handle = fits ? platform::OpenForReading(path.c_str(), &length) : int16_t{-1};
    return OpenFile(handle, length);
}

/// FileBase and extension, without the blanks that pad short names and that the files' home system
/// ignores. Empty when the base name does not fit.
std::string ShortName(const RateContext& context, std::string_view extension) {
    const std::string_view base_name = TerminatedText(context.FileBase);
    if (base_name.size() > kLongestBaseName) return {};
    std::string name(base_name);
    name.append(extension);
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

/// Empty when the name is, or when the path is too long.
template <std::size_t Size>
std::string PathIn(const char (&directory)[Size], std::string_view name) {
    std::string path(TerminatedText(directory));
    path.append(name);
    return name.empty() || path.size() > kLongestPath ? std::string() : path;
}

}  // namespace

OpenFile FindInDataDir(const RateContext& context, std::string_view file_name) {
    return OpenPath(PathIn(context.DataDir, file_name));
}

OpenFile FindDataFile(const RateContext& context, std::string_view extension) {
    const std::string name = ShortName(context, extension);
    if (extension == ".DIS") {
        OpenFile file = OpenPath(name);
        if (file) return file;
    }
    return FindInDataDir(context, name);
}

int16_t OpenDataFile(const RateContext& context, std::string_view extension) {
    return static_cast<int16_t>(FindDataFile(context, extension).Release());
}

bool HasDataFile(const RateContext& context, std::string_view extension) {
    return static_cast<bool>(FindDataFile(context, extension));
}

OpenFile FindUserFile(const RateContext& context, std::string_view extension) {
    const std::string name = ShortName(context, extension);
    OpenFile file = OpenPath(PathIn(context.UserDir, name));
    if (file) return file;
    return FindInDataDir(context, name);
}

std::FILE* OpenTextFile(const RateContext& context, std::string_view extension) {
    const std::string path = PathIn(context.DataDir, ShortName(context, extension));
    return path.empty() ? nullptr : platform::OpenStreamForReading(path.c_str());
}

std::string PathInCurrentDir(const RateContext& context, std::string_view extension) {
    return ShortName(context, extension);
}

std::string PathInUserDir(const RateContext& context, std::string_view extension) {
    return PathIn(context.UserDir, ShortName(context, extension));
}

}  // namespace hundredweight
