#include "session/sources.h"

#include <fmt/core.h>
#include <fmt/ranges.h>
#include <hundredweight/rate_context.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>

#include "platform/system.h"
#include "session/messages.h"
#include "shipment/spelling.h"
#include "text/path_text.h"

namespace cwt {
namespace {

Broken UnreadFile(const std::filesystem::path& path, const std::string& reason) {
    return Broken(fmt::format("{}: {}", PathText(path), reason));
}

/// Whether a directory has a file of the exact name.
bool HasFile(const std::filesystem::path& directory, const std::string& name) {
    std::error_code error;
    return exists(directory / PathOf(name), error);
}

constexpr std::string_view kSettings = ".SET";

bool HoldsSet(const std::filesystem::path& directory, const std::string& set) {
    try {
        return set.empty() ? !SetsIn(directory).empty()
                           : !FindFile(directory, set + std::string(kSettings)).empty();
    } catch (const Broken&) {
        return false;
    }
}

}  // namespace

Listing::Listing(const std::filesystem::path& directory, const std::string& ending) {
    const std::string wanted = UpperCase(ending);
    std::error_code error;
    std::filesystem::directory_iterator entry(directory, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::string name = UpperCase(PathText(entry->path().filename()));
        if (name.ends_with(wanted)) files_.emplace(std::move(name), entry->path());
    }
    if (error) throw UnreadFile(directory, error.message());
}

std::filesystem::path Listing::Find(const std::string& name) const {
    const auto [first, last] = files_.equal_range(UpperCase(name));
    std::filesystem::path found;
    for (auto file = first; file != last; ++file) {
        if (PathText(file->second.filename()) == name) return file->second;
        if (found.empty() || file->second < found) found = file->second;
    }
    return found;
}

std::vector<std::filesystem::path> Listing::files() const {
    std::vector<std::filesystem::path> files;
    for (const auto& [name, file] : files_) files.push_back(file);
    return files;
}

std::filesystem::path FindFile(const std::filesystem::path& directory, const std::string& name) {
    if (HasFile(directory, name)) return directory / PathOf(name);
    return Listing(directory).Find(name);
}

std::filesystem::path KeptListing::Find(const std::string& name) {
    if (HasFile(directory_, name)) return directory_ / PathOf(name);
    const std::string mark = SettledMark(directory_);
    if (!listing_ || mark.empty() || mark != mark_) listing_.emplace(directory_, ending_);
    mark_ = mark;
    return listing_->Find(name);
}

std::vector<std::string> SetsIn(const std::filesystem::path& directory) {
    std::vector<std::string> sets;
    for (const auto& file : Listing(directory, std::string(kSettings)).files()) {
        sets.push_back(PathText(file.filename().stem()));
    }
    return sets;
}

std::filesystem::path FindDataDirectory(const std::filesystem::path& given,
                                        const std::filesystem::path& start,
                                        const std::string& set) {
    const std::string what = set.empty() ? "no tariff set" : "no tariff set " + set;
    if (!given.empty()) {
        if (HoldsSet(given, set)) return given;
        if (!is_directory(given)) Listing{given};
        throw Broken(fmt::format("{} in {}", what, PathText(given)));
    }
    const std::filesystem::path lowest = (absolute(start) / ".").lexically_normal().parent_path();
    for (std::filesystem::path directory = lowest;; directory = directory.parent_path()) {
        if (HoldsSet(directory, set)) return directory;
        if (directory == directory.parent_path()) break;
    }
    throw Broken(fmt::format("{} in {} or above; give --data", what, PathText(lowest)));
}

std::string OnlySetIn(const std::filesystem::path& directory) {
    const std::vector<std::string> sets = SetsIn(directory);
    if (sets.size() == 1) return sets[0];
    throw Broken(PathText(directory) +
                 (sets.empty()
                      ? ": has no settings of a set (NAME.SET)"
                      : fmt::format(": has the sets {}; --set names one", fmt::join(sets, ", "))));
}

Sources Fixed(Sources sources) {
    const auto path = absolute(sources.data).lexically_normal();
    if (PathText(path).size() + 1 < sizeof RateContext::DataDir) sources.data = path;
    return sources;
}

void RequireWholeRecords(const std::filesystem::path& file, std::size_t record_size) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    const std::streamoff size = stream.tellg();
    if (size < 0) return;
    const auto rest = static_cast<std::streamsize>(size % static_cast<std::streamoff>(record_size));
    std::string end(static_cast<std::size_t>(rest), ' ');
    stream.seekg(size - rest).read(end.data(), rest);
    constexpr std::string_view kFillers("\x1A \0\r\n", 5);
    if (end.find_first_not_of(kFillers) == end.npos) return;
    throw UnreadFile(
        file, fmt::format("it ends within a record, {} bytes behind the last whole one", rest));
}

void RequireRecord(const std::filesystem::path& file, std::size_t record_size) {
    std::error_code error;
    const std::uintmax_t size = file_size(file, error);
    if (error || size >= record_size) return;
    throw UnreadFile(file,
                     fmt::format("it has {} of the {} bytes of its record", size, record_size));
}

void RequireWritable(const std::filesystem::path& file) {
    std::FILE* const stream = std::fopen(file.string().c_str(), "r+b");
    if (stream == nullptr) throw UnreadFile(file, std::generic_category().message(errno));
    std::fclose(stream);
}

void RequireReadable(const std::filesystem::path& file) {
    std::error_code error;
    const bool regular = is_regular_file(file, error);
    if (error) throw UnreadFile(file, error.message());
    if (!regular) throw UnreadFile(file, "this is no regular file");
    std::FILE* const stream = std::fopen(file.string().c_str(), "rb");
    if (stream == nullptr) throw UnreadFile(file, std::generic_category().message(errno));
    char buffer[1 << 16];
    errno = 0;
    while (std::fread(buffer, 1, sizeof buffer, stream) > 0) {
    }
    const int reason = std::ferror(stream) != 0 ? errno : 0;
    std::fclose(stream);
    if (reason != 0) throw UnreadFile(file, std::generic_category().message(reason));
}

}  // namespace cwt
