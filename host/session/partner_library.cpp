#include "session/partner_library.h"

#include <fmt/core.h>
#include <hundredweight/platform.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "session/messages.h"
#include "text/code_page.h"

namespace cwt {
PartnerLibrary::PartnerLibrary(const std::string& name)
    : module_(LoadPartnerLibrary(name.c_str())) {
    if (module_ == nullptr) {
        throw Broken(fmt::format("{} cannot be loaded: {}", name, PartnerLibraryError()));
    }
}

PartnerLibrary::~PartnerLibrary() {
    UnloadPartnerLibrary(module_);
}

ErrorOutput::ErrorOutput() : file_(std::tmpfile()) {
    if (file_ == nullptr) return;
    std::fflush(stderr);
    standard_error_ = dup(STDERR_FILENO);
    if (standard_error_ >= 0) dup2(fileno(file_), STDERR_FILENO);
}

ErrorOutput::~ErrorOutput() {
    if (standard_error_ >= 0) {
        std::fflush(stderr);
        dup2(standard_error_, STDERR_FILENO);
        close(standard_error_);
    }
    if (file_ != nullptr) std::fclose(file_);
}

std::string ErrorOutput::Text() const {
    if (file_ == nullptr) return {};
    std::fflush(stderr);
    std::rewind(file_);
    std::string bytes;
    for (int byte; (byte = std::fgetc(file_)) != EOF;) bytes += static_cast<char>(byte);
    std::istringstream lines(bytes);
    std::vector<std::string> told;
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || std::find(told.begin(), told.end(), line) != told.end()) continue;
        told.push_back(line);
        text += (text.empty() ? "" : "; ") + Printable(line);
    }
    return text;
}

}  // namespace cwt
