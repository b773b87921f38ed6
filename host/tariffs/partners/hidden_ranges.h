// Rows of two ranges of which the first that fits holds: those that never come to hold, and what
// all of them cover.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace cwt {

/// Characters of a postal code that lanes and areas go by.
inline constexpr std::size_t kPrefixLength = 3;

/// Numbers that order as the prefixes of postal codes do.
struct PrefixSpan {
    std::uint32_t low = 0, high = 0;
    bool operator==(const PrefixSpan&) const = default;
    bool operator<(const PrefixSpan& other) const {
        return std::pair(low, high) < std::pair(other.low, other.high);
    }
};

/// The number of the first three characters.
std::uint32_t PrefixNumber(std::string_view text);
/// Reads "300-319" or "606"; nothing for another form, or a range that runs backwards.
std::optional<PrefixSpan> ReadPrefixSpan(std::string_view text);

/// The same prefixes in spans that ascend and do not overlap.
std::vector<PrefixSpan> Merged(std::vector<PrefixSpan> spans);
bool Covers(const std::vector<PrefixSpan>& merged, std::uint32_t prefix);

/// Different spans, numbered as they come.
class SpanSet {
 public:
    std::uint32_t Add(PrefixSpan span);
    /// Numbers of the spans that contain each span whole, itself among them, by its number; some of
    /// them where they are very many.
    std::vector<std::vector<std::uint32_t>> Containing() const;
    const std::vector<PrefixSpan>& list() const { return list_; }

 private:
    std::map<PrefixSpan, std::uint32_t> numbers_;
    std::vector<PrefixSpan> list_;
};

class RangeRows {
 public:
    void Add(PrefixSpan one, PrefixSpan other, std::size_t line);
    struct Hidden {
        std::size_t line;
        std::size_t by;  ///< Line of the row that fits wherever this one does.
    };
    /// In the order of their lines.
    std::vector<Hidden> FindHidden() const;
    /// What any of their ranges covers, merged.
    std::vector<PrefixSpan> Covered() const;

 private:
    struct Row {
        std::uint64_t key;  ///< The numbers of both ranges.
        std::uint32_t line;
    };
    SpanSet ones_, others_;
    std::vector<Row> rows_;
};

}  // namespace cwt
