#include "tariffs/partners/hidden_ranges.h"

#include <algorithm>
#include <unordered_map>

namespace cwt {
namespace {

constexpr int kHalf = 32;

std::uint64_t KeyOf(std::uint32_t one, std::uint32_t other) {
    return std::uint64_t{one} << kHalf | other;
}

}  // namespace

std::uint32_t PrefixNumber(std::string_view text) {
    std::uint32_t number = 0;
    for (const char c : text.substr(0, kPrefixLength)) {
        number = number << 8 | static_cast<unsigned char>(c);
    }
    return number;
}

std::optional<PrefixSpan> ReadPrefixSpan(std::string_view text) {
    const bool is_one = text.size() == kPrefixLength;
    const bool is_two = text.size() == 2 * kPrefixLength + 1 && text[kPrefixLength] == '-';
    if (!is_one && !is_two) return std::nullopt;
    const PrefixSpan span{PrefixNumber(text),
                          PrefixNumber(text.substr(is_one ? 0 : kPrefixLength + 1))};
    return span.low <= span.high ? std::optional(span) : std::nullopt;
}

std::vector<PrefixSpan> Merged(std::vector<PrefixSpan> spans) {
    std::sort(spans.begin(), spans.end());
    std::vector<PrefixSpan> merged;
    for (const PrefixSpan span : spans) {
        if (merged.empty() || merged.back().high < span.low) {
            merged.push_back(span);
        } else {
            merged.back().high = std::max(merged.back().high, span.high);
        }
    }
    return merged;
}

bool Covers(const std::vector<PrefixSpan>& merged, std::uint32_t prefix) {
    const auto behind = std::ranges::upper_bound(merged, prefix, {}, &PrefixSpan::low);
    return behind != merged.begin() && prefix <= std::prev(behind)->high;
}

std::uint32_t SpanSet::Add(PrefixSpan span) {
    const auto [found, is_new] =
        numbers_.try_emplace(span, static_cast<std::uint32_t>(list_.size()));
    if (is_new) list_.push_back(span);
    return found->second;
}

std::vector<std::vector<std::uint32_t>> SpanSet::Containing() const {
    // Odd files alone have more of them in one another.
    constexpr std::size_t kMostOpen = 64;
    std::vector<std::vector<std::uint32_t>> containing(list_.size());
    std::vector<std::pair<PrefixSpan, std::uint32_t>> sorted(numbers_.begin(), numbers_.end());
    std::ranges::sort(sorted, [](const auto& a, const auto& b) {
        return a.first.low != b.first.low ? a.first.low < b.first.low : a.first.high > b.first.high;
    });
    // Spans that began before and have not ended.
    std::vector<std::pair<PrefixSpan, std::uint32_t>> open;
    for (const auto& each_sorted : sorted) {
        const PrefixSpan span = each_sorted.first;
        const std::uint32_t number = each_sorted.second;
        std::erase_if(open, [&](const auto& each) { return each.first.high < span.low; });
        if (open.size() < kMostOpen) {
            open.emplace_back(span, number);
        } else {
            containing[number].push_back(number);
        }
        for (const auto& [outer, outer_number] : open) {
            if (outer.high >= span.high) containing[number].push_back(outer_number);
        }
    }
    return containing;
}

void RangeRows::Add(PrefixSpan one, PrefixSpan other, std::size_t line) {
    rows_.push_back({KeyOf(ones_.Add(one), others_.Add(other)), static_cast<std::uint32_t>(line)});
}

std::vector<PrefixSpan> RangeRows::Covered() const {
    std::vector<PrefixSpan> spans = ones_.list();
    spans.insert(spans.end(), others_.list().begin(), others_.list().end());
    return Merged(std::move(spans));
}

std::vector<RangeRows::Hidden> RangeRows::FindHidden() const {
    const auto around_one = ones_.Containing();
    const auto around_other = others_.Containing();
    std::unordered_map<std::uint64_t, std::uint32_t> first_lines;
    first_lines.reserve(rows_.size());
    std::vector<Hidden> hidden;
    for (const Row& row : rows_) {
        std::size_t by = 0;
        for (const std::uint32_t one : around_one[static_cast<std::uint32_t>(row.key >> kHalf)]) {
            for (const std::uint32_t other : around_other[static_cast<std::uint32_t>(row.key)]) {
                const auto found = first_lines.find(KeyOf(one, other));
                if (found != first_lines.end() && (by == 0 || found->second < by)) {
                    by = found->second;
                }
            }
        }
        if (by != 0) hidden.push_back({row.line, by});
        first_lines.try_emplace(row.key, row.line);
    }
    return hidden;
}

}  // namespace cwt
