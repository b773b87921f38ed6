#include "tariffs/folder_files.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "files/output_file.h"
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
        bytes.resize(file_size(path));
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    if (file && file.gcount() == static_cast<std::streamsize>(bytes.size())) return bytes;
    Fail(path, std::generic_category().message(errno != 0 ? errno : EIO));
}

void ReadInto(Files& files, const fs::path& directory, const std::string& prefix, bool deep) {
    for (const auto& entry : fs::directory_iterator(directory)) {
        const std::string name = PathText(entry.path().filename());
        if (name.starts_with('.')) continue;
        if (entry.is_directory()) {
            if (deep) ReadInto(files, entry.path(), prefix + name + '/', deep);
        } else if (entry.is_regular_file()) {
            files[prefix + name] = ReadWhole(entry.path());
        } else {
            Fail(entry.path(), "is no file that can be read");
        }
    }
}

void WriteOne(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    OutputFile file(PathText(path), true);
    file.Write(bytes);
    file.Finish();
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

std::vector<std::string> Present(const fs::path& directory, const std::vector<std::string>& names) {
    std::vector<std::string> present;
    std::ranges::copy_if(names, std::back_inserter(present), [&](const std::string& name) {
        std::error_code ignored;
        return exists(symlink_status(directory / PathOf(name), ignored));
    });
    return present;
}

void WriteFiles(const fs::path& directory, const Files& files, const std::string& last) {
    try {
        create_directories(directory);
        if (files.contains(last)) RemoveFiles(directory, {last});
        for (const auto& [name, bytes] : files) {
            if (name != last) WriteOne(directory / PathOf(name), bytes);
        }
        if (files.contains(last)) WriteOne(directory / PathOf(last), files.at(last));
    } catch (const fs::filesystem_error& error) {
        Fail(error.path1(), error.code().message());
    }
}

void RemoveFiles(const fs::path& directory, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        std::error_code error;
        fs::remove(directory / PathOf(name), error);
        if (error) Fail(directory / PathOf(name), error.message());
    }
}

}  // namespace cwt
