// What is found in a tariff's files when they are exported, built or compared, with its place.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// Where something stands: a file of the folder or set, a line and a column counted from 1 (in
/// characters), 0 when it is not of one line or column.
struct Place {
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
};

struct Finding {
    enum Level {
        kNote,     ///< Something is as it should be, and worth knowing.
        kWarning,  ///< The set works, and hardly as it was meant.
        kError,    ///< There is no set of this.
    };
    Level level;
    Place place;
    std::string text;
};

class Findings {
 public:
    void Note(Place place, std::string text);
    void Warn(Place place, std::string text);
    void Refuse(Place place, std::string text);

    /// Of each level the first thousand.
    const std::vector<Finding>& list() const { return list_; }
    /// How many more there were.
    std::size_t unlisted() const { return unlisted_; }
    bool Has(Finding::Level level) const;
    /// Makes errors of all warnings.
    void MakeStrict();

 private:
    void Add(Finding::Level level, Place place, std::string text);

    std::vector<Finding> list_;
    std::size_t counts_[3] = {};  ///< By level.
    std::size_t unlisted_ = 0;
};

/// A value's name, and what it holds, cut when it is long; behind them, a text.
std::string ValueWords(std::string_view name, std::string_view value);
std::string ValueText(std::string_view name, std::string_view value, std::string_view text);

/// One line: "zip-ranges.csv:3:7: error: ...".
std::string FindingText(const Finding& finding);

}  // namespace cwt
