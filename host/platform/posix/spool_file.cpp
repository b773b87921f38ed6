#include "platform/spool_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace cwt {
namespace {

[[noreturn]] void Fail() {
    const int reason = errno;
    throw std::runtime_error("temporary file: " + std::generic_category().message(reason));
}

int NewFile() {
    std::string name = (std::filesystem::temp_directory_path() / "cwt-XXXXXX").string();
    const int number = mkostemp(name.data(), 0);
    if (number < 0) Fail();
    unlink(name.c_str());
    return number;
}

}  // namespace

SpoolFile::SpoolFile() : number_(NewFile()) {}

SpoolFile::~SpoolFile() {
    close(number_);
}

void SpoolFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(number_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) Fail();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string SpoolFile::name() const {
    return "/proc/self/fd/" + std::to_string(number_);
}

}  // namespace cwt
