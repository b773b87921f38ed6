#include "files/output_file.h"

#include <fmt/core.h>

#include <cerrno>
#include <random>
#include <stdexcept>
#include <system_error>

#include "text/path_text.h"

namespace cwt {

namespace fs = std::filesystem;

OutputFile::OutputFile(const std::string& path, bool replace)
    : path_(PathOf(path)), working_path_(path_), replace_(replace) {
    RequireAbsence();
    working_path_ += fmt::format(".{:08x}.part", std::random_device()());
    errno = 0;
    stream_.open(working_path_, std::ios::binary);
    if (!stream_) Fail();
}

OutputFile::~OutputFile() {
    if (!stream_.is_open()) return;
    stream_.close();
    std::error_code ignored;
    fs::remove(working_path_, ignored);
}

void OutputFile::Write(std::string_view text) {
    errno = 0;
    if (!stream_.write(text.data(), static_cast<std::streamsize>(text.size()))) Fail();
}

void OutputFile::Finish() {
    errno = 0;
    if (!stream_.flush()) Fail();
    RequireAbsence();
    stream_.close();
    std::error_code error;
    fs::rename(working_path_, path_, error);
    if (!error) return;
    std::error_code ignored;
    fs::remove(working_path_, ignored);
    throw std::runtime_error(PathText(path_) + ": " + error.message());
}

void OutputFile::RequireAbsence() const {
    std::error_code ignored;
    if (!replace_ && fs::exists(fs::symlink_status(path_, ignored))) {
        throw std::runtime_error(PathText(path_) + ": is there already; --force replaces it");
    }
}

void OutputFile::Fail() const {
    const int reason = errno != 0 ? errno : EIO;
    throw std::runtime_error(PathText(path_) + ": " + std::generic_category().message(reason));
}

}  // namespace cwt
