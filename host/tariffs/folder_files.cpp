#include "tariffs/folder_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "files/output_file.h"
#include "tariffs/families/family.h"
#include "text/letters.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& path, const std::string& reason) {
    throw std::runtime_error(PathText(path) + ": " + reason);
}

std::string ReadWhole(const fs::path& path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    if (file) {
        const std::uintmax_t size = file_size(path);
        if (size > bytes.max_size()) Fail(path, "is larger than this program can hold");
        bytes.resize(static_cast<std::size_t>(size));
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    if (file && file.gcount() == static_cast<std::streamsize>(bytes.size())) return bytes;
    Fail(path, std::generic_category().message(errno != 0 ? errno : EIO));
}

/// Whether a name is that of a set's file, or of a text.
bool IsFileName(const fs::path& path) {
    const std::string name = LowerCase(PathText(path.filename()));
    if (name.ends_with(".csv") || name.ends_with(".json")) return true;
    return std::ranges::any_of(Families(), [&](const Family& family) {
        const std::string extension = LowerCase(family.extension);
        return name == extension || name.ends_with('.' + extension);
    });
}

void ReadInto(Files& files, const fs::path& directory, const std::string& prefix, bool deep) {
    for (const auto& entry : fs::directory_iterator(directory)) {
        const std::string name = PathText(entry.path().filename());
        if (name.starts_with('.')) continue;
        if (entry.is_directory()) {
            if (IsFileName(entry.path())) Fail(entry.path(), "is a folder, where a file is wanted");
            if (deep && prefix.empty()) {
                ReadInto(files, entry.path(), name + '/', deep);
            } else if (deep) {
                files[prefix + name + '/'];
            }
        } else if (entry.is_regular_file()) {
            files[prefix + name] = ReadWhole(entry.path());
        } else {
            Fail(entry.path(), "is no file that can be read");
        }
    }
}

}  // namespace

Files ReadFiles(const fs::path& directory, bool deep) {
    try {
        Files files;
        ReadInto(files, directory, "", deep);
        return files;
    } catch (const fs::filesystem_error& error) {
        Fail(error.path1().empty() ? directory : error.path1(), error.code().message());
    }
}

std::vector<std::string> NamesIn(const fs::path& directory) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory, error)) {
        names.push_back(PathText(entry.path().filename()));
    }
    if (error && error != std::errc::no_such_file_or_directory) Fail(directory, error.message());
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> InAnyLetters(const std::string& name,
                                      const std::vector<std::string>& names) {
    std::vector<std::string> found;
    std::ranges::copy_if(names, std::back_inserter(found), [&](const std::string& other) {
        return LowerCase(other) == LowerCase(name);
    });
    return found;
}

bool HasBytes(const fs::path& file, const std::string& bytes) {
    return is_regular_file(file) && ReadWhole(file) == bytes;
}

void WriteFiles(const fs::path& directory, const Files& files) {
    try {
        for (const auto& [name, bytes] : files) {
            const fs::path path = directory / PathOf(name);
            create_directories(path.parent_path());
            OutputFile file(PathText(path), false);
            file.Write(bytes);
            file.Finish();
        }
    } catch (const fs::filesystem_error& error) {
        Fail(error.path1(), error.code().message());
    }
}

}  // namespace cwt
