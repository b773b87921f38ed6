#include "tariffs/finding.h"

#include <fmt/core.h>

#include <algorithm>

#include "text/code_page.h"

namespace cwt {

void Findings::Note(Place place, std::string text) {
    Add(Finding::kNote, std::move(place), std::move(text));
}

void Findings::Warn(Place place, std::string text) {
    Add(Finding::kWarning, std::move(place), std::move(text));
}

void Findings::Refuse(Place place, std::string text) {
    Add(Finding::kError, std::move(place), std::move(text));
}

/// A million slips, or a text of a million characters, are told in little.
void Findings::Add(Finding::Level level, Place place, std::string text) {
    constexpr std::size_t kMost = 1000;
    constexpr std::size_t kBeginning = 200, kEnd = 150;
    if (counts_[level]++ >= kMost) {
        ++unlisted_;
        return;
    }
    if (text.size() > kBeginning + kEnd) {
        text.replace(kBeginning, text.size() - kBeginning - kEnd, "...");
    }
    list_.push_back({level, std::move(place), std::move(text)});
}

bool Findings::Has(Finding::Level level) const {
    return std::ranges::find(list_, level, &Finding::level) != list_.end();
}

void Findings::MakeStrict() {
    for (Finding& finding : list_) {
        if (finding.level == Finding::kWarning) finding.level = Finding::kError;
    }
}

std::string ValueWords(std::string_view name, std::string_view value) {
    constexpr std::size_t kLongest = 40;
    const bool is_long = value.size() > kLongest;
    return fmt::format("{} \"{}{}\"", name, Printable(value.substr(0, kLongest)),
                       is_long ? "..." : "");
}

std::string ValueText(std::string_view name, std::string_view value, std::string_view text) {
    return fmt::format("{} {}", ValueWords(name, value), text);
}

std::string FindingText(const Finding& finding) {
    constexpr const char* kWords[] = {"note", "warning", "error"};
    std::string text = finding.place.file;
    if (finding.place.line > 0) text += fmt::format(":{}", finding.place.line);
    if (finding.place.column > 0) text += fmt::format(":{}", finding.place.column);
    return Printable(fmt::format("{}: {}: {}", text, kWords[finding.level], finding.text));
}

}  // namespace cwt
