// The engine's rate base: tariffs, their rates and lanes, and the points and states it knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reference/engine/lane_table.h"
#include "reference/engine/numbering.h"
#include "reference/engine/point_table.h"
#include "reference/engine/range_index.h"
#include "reference/engine/short_text.h"
#include "reference/text/postal_prefixes.h"

namespace hundredweight::reference {

inline constexpr std::size_t kMostTableEntries = 20;  ///< Classes or weight breaks of a tariff.

struct Tariff {
    std::string name;                  ///< Eight characters.
    std::int32_t effective_date = 0;   ///< YYYYMMDD: its rates hold from this day on.
    std::vector<ShortText> classes;    ///< "FAK" alone: one rate for freight of all kinds.
    std::vector<std::int32_t> breaks;  ///< Lowest weight of each break in pounds, ascending from 1.
    Numbering scales;                  ///< By code.
    std::vector<std::int32_t> rates;   ///< Cents per hundredweight by scale, class, break.
    std::vector<std::uint8_t> classes_rated;  ///< How many classes of each scale have rates.
    LaneTable lanes;

    /// Position in classes, or npos.
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    std::size_t ClassIndex(std::string_view class_code) const;
    /// The break that holds a weight.
    std::size_t BreakIndex(std::int32_t weight) const;
    /// Its code, of at most 6 characters.
    ShortText ScaleCode(std::uint32_t scale) const;
    /// One rate per weight break.
    std::span<const std::int32_t> RatesOf(std::uint32_t scale, std::size_t class_index) const;
};

/// The state of each range of prefixes; the first range that fits holds.
class StateTable {
 public:
    /// The state has two letters.
    void Add(PrefixRange range, std::string_view state);
    /// To be called when all are there.
    void Build() { ranges_.Build(); }
    /// Empty when no range fits.
    std::string_view Find(Prefix prefix) const;

 private:
    RangeIndex ranges_;
    std::string states_;  ///< Of the ranges by their numbers.
};

class RateBase {
 public:
    /// In the order of the file.
    const std::vector<Tariff>& Tariffs() const { return tariffs_; }
    /// Null when there is none.
    const Tariff* FindTariff(std::string_view name) const;
    Tariff* FindTariff(std::string_view name);
    /// Its name, of eight characters, must be new.
    void Add(Tariff tariff);

    PointTable points;
    StateTable states;

    /// To be called when all is there.
    void Build();

 private:
    std::optional<Numbering::Number> NumberOf(std::string_view tariff_name) const;

    std::vector<Tariff> tariffs_;
    Numbering names_;
};

/// Reads the text files of a directory. Throws std::runtime_error with file, line and reason when
/// one is missing or malformed.
RateBase ReadRateBase(const std::string& directory);

}  // namespace hundredweight::reference
