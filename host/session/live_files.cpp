#include "session/live_files.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "platform/system.h"
#include "session/messages.h"
#include "shipment/spelling.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

bool IsLive(const std::string& name, const std::string& set) {
    const std::string upper = UpperCase(name);
    if (upper == "PROFILE.FIL" || upper.ends_with(".ZP6")) return true;
    constexpr std::array kExtensions = {".ZMC", ".CBS", ".CMT"};
    return std::ranges::any_of(
        kExtensions, [&](const char* extension) { return upper == UpperCase(set) + extension; });
}

}  // namespace

LiveFiles::LiveFiles(const Sources& sources)
    : sources_(sources), directory_(ChangeMark(sources.data)), marks_(Look()) {}

LiveFiles::Marks LiveFiles::Look() const {
    Marks marks;
    std::error_code error;
    fs::directory_iterator entry(sources_.data, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = PathText(entry->path().filename());
        if (IsLive(name, sources_.set)) marks[name] = ChangeMark(entry->path());
    }
    if (error) throw Broken(PathText(sources_.data) + ": " + error.message());
    return marks;
}

std::string LiveFiles::Changed() {
    for (const auto& [name, mark] : marks_) {
        if (ChangeMark(sources_.data / PathOf(name)) != mark) return name;
    }
    // A file that comes changes its directory.
    std::string directory = ChangeMark(sources_.data);
    if (directory == directory_) return {};
    for (const auto& [name, mark] : Look()) {
        if (!marks_.contains(name)) return name;
    }
    directory_ = std::move(directory);
    return {};
}

}  // namespace cwt
