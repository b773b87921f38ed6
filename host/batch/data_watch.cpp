#include "batch/data_watch.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

#include "files/digest.h"
#include "platform/system.h"
#include "session/messages.h"
#include "session/tariff_set.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

bool IsOfABatch(std::string_view name) {
    constexpr std::string_view kRowEndings[] = {
        ".ndjson", ".jsonl",  ".csv", ".json",    ".html",    ".gz",
        ".zst",    ".sqlite", ".db",  ".partial", ".journal", ".partial-journal",
        ".log"};
    for (const std::string_view ending : kRowEndings) {
        if (name.ends_with(ending)) return true;
    }
    return false;
}

/// What the set needs of what cannot be read is a matter of its load.
std::string StateOf(const fs::path& file) {
    try {
        return fmt::format("{} bytes {:016x}", file_size(file), FileDigest(file));
    } catch (const std::runtime_error&) {
        return "cannot be read";
    }
}

/// A bare name is looked for where the program's own libraries are.
bool IsPath(const std::string& partner) {
    return PathOf(partner).has_parent_path();
}

}  // namespace

DataWatch::DataWatch(Sources sources, bool may_convert)
    : sources_(std::move(sources)), marks_(Look()), is_converted_(!may_convert) {
    for (const auto& [name, mark] : marks_) files_[name] = StateOf(PathOf(name));
    is_converted_ = is_converted_ || IsConverted(marks_);
}

bool DataWatch::IsConverted(const Texts& marks) {
    return std::ranges::any_of(
        marks, [](const auto& file) { return PathOf(file.first).filename() == "PROFILE.ZSA"; });
}

/// Ratings put profiles of the earlier layout into today's, once, and say so with a file of their
/// own behind it; where there are no profiles they make some. What they made is watched from then
/// on.
void DataWatch::FollowConversion(Texts& marks) {
    const auto is_profiles = [](const std::string& name) {
        return PathText(PathOf(name).filename()).starts_with("PROFILE.");
    };
    const auto is_other = [&](const auto& file) {
        return is_profiles(file.first) && files_.contains(file.first) &&
               marks.contains(file.first) && marks.at(file.first) != marks_.at(file.first);
    };
    // Between a file's replacement and the word of it there is a moment.
    for (int waits = 0; waits < 20 && std::ranges::any_of(marks_, is_other); ++waits) {
        if (IsConverted(marks)) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        marks = Look();
    }
    is_converted_ = IsConverted(marks);
    const auto is_passing = [&](const auto& file) {
        const bool is_gone = !marks.contains(file.first);
        return is_profiles(file.first) &&
               (is_converted_ || (is_gone && PathOf(file.first).filename() != "PROFILE.FIL"));
    };
    std::erase_if(files_, is_passing);
    for (const auto& [name, mark] : marks) {
        if (!is_profiles(name) || files_.contains(name)) continue;
        files_[name] = StateOf(PathOf(name));
        marks_[name] = mark;
    }
}

DataWatch::Texts DataWatch::Look() const {
    Texts marks;
    const auto mark = [&](const fs::path& file) { marks[PathText(file)] = ChangeMark(file); };
    for (const fs::directory_entry& entry : fs::directory_iterator(sources_.data)) {
        if (IsOfABatch(PathText(entry.path().filename())) || !entry.is_regular_file()) continue;
        if (!IsStandardStream(entry.path())) mark(entry.path());
    }
    if (const auto discounts = TariffSet::DiscountsElsewhere(sources_); !discounts.empty()) {
        mark(discounts);
    }
    for (const std::string& partner : {sources_.engine, sources_.service_guide}) {
        if (IsPath(partner) && fs::exists(PathOf(partner))) mark(PathOf(partner));
    }
    return marks;
}

std::string DataWatch::Change() {
    Texts marks = Look();
    if (marks == marks_) return {};
    if (!is_converted_) FollowConversion(marks);
    for (const auto& [name, state] : files_) {
        const auto found = marks.find(name);
        if (found == marks.end()) return name + ": is gone";
        if (found->second != marks_.at(name) && StateOf(PathOf(name)) != state) {
            return name + ": has changed";
        }
    }
    for (const auto& [name, mark] : marks) {
        if (!files_.contains(name)) return name + ": has come";
    }
    marks_ = marks;
    return {};
}

void DataWatch::RequireUnchanged() {
    const std::string change = Change();
    if (change.empty()) return;
    throw Broken(change +
                 " since the run began, and bills of two tariffs must not stand in one output");
}

}  // namespace cwt
