#include "text/nearest_word.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "text/letters.h"

namespace cwt {
namespace {

constexpr std::size_t kLongestWord = 64;  ///< Nobody means a longer one.

/// How many characters must be put in, left out or replaced (edit distance); `limit` when that many
/// do not suffice to make it less.
std::size_t Distance(std::string_view a, std::string_view b, std::size_t limit) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) >= limit) return limit;
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        // To be less, no two places that belong together lie farther apart.
        const std::size_t begin = i + 1 - std::min(i + 1, limit);
        const std::size_t end = std::min(b.size(), i + limit);
        std::size_t diagonal = std::exchange(row[begin], i + 1 - begin);
        std::size_t least = row[begin];
        for (std::size_t j = begin; j < end; ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
            least = std::min(least, row[j + 1]);
        }
        // No later row has less.
        if (least >= limit) return limit;
    }
    return row[b.size()];
}

/// Whether two names differ in the number behind their last underscore alone: who writes class_9
/// does not mean class_1.
bool IsNumberedOtherwise(std::string_view a, std::string_view b) {
    constexpr std::string_view kDigits = "0123456789";
    const std::size_t stem = a.find_last_not_of(kDigits) + 1;
    return stem > 0 && a[stem - 1] == '_' && stem < a.size() && stem < b.size() &&
           b.find_last_not_of(kDigits) + 1 == stem && a.substr(0, stem) == b.substr(0, stem);
}

}  // namespace

std::vector<std::string> NearestWord(std::string_view written,
                                     std::span<const std::string_view> known) {
    if (written.size() > kLongestWord) return {};
    const std::string lower = LowerCase(written);
    std::string_view nearest;
    std::size_t least = written.size() / 3 + 1;
    for (const std::string_view word : known) {
        const std::string known_lower = LowerCase(word);
        const std::size_t distance = Distance(lower, known_lower, least);
        if (distance < least && distance < word.size() &&
            !IsNumberedOtherwise(lower, known_lower)) {
            least = distance;
            nearest = word;
        }
    }
    if (nearest.empty()) return {};
    return {std::string(nearest)};
}

bool IsOneSlipApart(std::string_view a, std::string_view b) {
    if (a.size() < b.size()) std::swap(a, b);
    const auto split = static_cast<std::size_t>(std::ranges::mismatch(a, b).in2 - b.begin());
    a.remove_prefix(split);
    b.remove_prefix(split);
    if (a.empty() || a.size() > b.size() + 1) return false;
    if (a.size() > b.size()) return a.substr(1) == b;
    return a.substr(1) == b.substr(1) ||
           (a.size() > 1 && a[0] == b[1] && a[1] == b[0] && a.substr(2) == b.substr(2));
}

}  // namespace cwt
