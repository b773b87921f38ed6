#include "session/partner_library.h"

#include <fmt/core.h>
#include <hundredweight/platform.h>
#include <unistd.h>

#include <set>
#include <sstream>

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

int ErrorOutput::standard_error = -1;

ErrorOutput::ErrorOutput() : file_(std::tmpfile()) {
    if (file_ == nullptr || standard_error >= 0) return;
    std::fflush(stderr);
    standard_error = dup(STDERR_FILENO);
    if (standard_error >= 0) dup2(fileno(file_), STDERR_FILENO);
}

ErrorOutput::~ErrorOutput() {
    GiveBack();
    if (file_ != nullptr) std::fclose(file_);
}

void ErrorOutput::GiveBack() {
    if (standard_error < 0) return;
    std::fflush(stderr);
    dup2(standard_error, STDERR_FILENO);
    close(standard_error);
    standard_error = -1;
}

std::string ErrorOutput::Text() const {
    constexpr std::size_t kMostToldLines = 8;
    if (file_ == nullptr) return {};
    std::fflush(stderr);
    std::rewind(file_);
    std::string bytes;
    char buffer[1 << 12];
    for (std::size_t size; (size = std::fread(buffer, 1, sizeof buffer, file_)) > 0;) {
        bytes.append(buffer, size);
    }
    std::istringstream lines(bytes);
    std::set<std::string> told;
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || !told.insert(line).second) continue;
        if (told.size() <= kMostToldLines) text += (text.empty() ? "" : "; ") + Printable(line);
    }
    if (told.size() > kMostToldLines)
        text += fmt::format("; {} lines more", told.size() - kMostToldLines);
    return text;
}

}  // namespace cwt
