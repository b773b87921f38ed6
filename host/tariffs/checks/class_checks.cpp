// Freight classes, weight breaks and the defaults that name a break.
#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "tariffs/checks/field_values.h"
#include "tariffs/checks/freight_classes.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

constexpr std::size_t kMappedClasses = 18;
constexpr std::string_view kUnused = "XXX";

void CheckClasses(CheckedSet& set) {
    const Table classes = set.TableOf("CLS");
    const Column& column = classes.column("class");
    std::map<std::string_view, std::size_t> rows;
    for (std::size_t row = 0; row < classes.size(); ++row) {
        const std::string_view name = Trimmed(classes.bytes(row, column));
        const auto [first, is_new] = rows.emplace(name, row);
        if (!is_new) {
            set.DoubtAgainst(classes, row, column, first->second,
                             "is there twice, and the first is always found; leave one");
        } else if (name == "92.5" || name == "77.5") {
            set.Doubt(classes, row, column,
                      "is written {} in a tariff: a class is sent in three characters, and this "
                      "one would arrive as {}",
                      name.substr(0, 2), name.substr(0, 3));
        } else if (name != kAllKinds && !IsFreightClass(name)) {
            set.Doubt(classes, row, column,
                      "is no class of the National Motor Freight Classification, which has {}",
                      fmt::join(kFreightClasses, ", "));
        }
    }
}

void CheckMappedClasses(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    const Column& is_on = profiles.column("class_map");
    const Table classes = set.TableOf("CLS");
    if (classes.size() <= kMappedClasses) return;
    for (std::size_t row = 0; row < profiles.size(); ++row) {
        if (BinaryIn<std::int32_t>(profiles.bytes(row, is_on)) == 0) continue;
        set.Doubt(profiles, row, is_on,
                  "maps the first {} classes, and classes.csv has {}: what the others are rated "
                  "as is told nowhere",
                  kMappedClasses, classes.size());
    }
}

struct Bounds {
    int lowest, highest;
};

/// The bounds of a weight break; nothing when they are no numbers.
std::optional<Bounds> BoundsOf(const Table& breaks, std::size_t row) {
    const auto lowest = WholeIn(breaks.bytes(row, breaks.column("lowest_pounds")));
    const auto highest = WholeIn(breaks.bytes(row, breaks.column("highest_pounds")));
    return lowest && highest ? std::optional(Bounds{*lowest, *highest}) : std::nullopt;
}

void CheckBreaks(CheckedSet& set) {
    const Table breaks = set.TableOf("WGT");
    for (std::size_t row = 0; row < breaks.size(); ++row) {
        for (const char* name : {"lowest_pounds", "highest_pounds"}) {
            const Column& column = breaks.column(name);
            if (WholeIn(breaks.bytes(row, column))) continue;
            set.Doubt(breaks, row, column,
                      "is no whole number of pounds: what its first digits give is read, and 0 "
                      "without any");
        }
        const std::optional<Bounds> bounds = BoundsOf(breaks, row);
        if (bounds && bounds->lowest > bounds->highest) {
            set.Doubt(breaks, row, breaks.column("lowest_pounds"),
                      "is above highest_pounds, {}: no weight is in the break", bounds->highest);
        }
        if (breaks.bytes(row, breaks.column("label")).starts_with(kUnused)) {
            set.Doubt(breaks, row, breaks.column("label"),
                      "begins with XXX, as breaks that are not in use: weights in it are refused");
        }
    }
}

/// Breaks follow one another: each from the pound behind the one before it.
void CheckBreakAscent(CheckedSet& set) {
    const Table breaks = set.TableOf("WGT");
    const Column& lowest = breaks.column("lowest_pounds");
    std::optional<Bounds> before;
    for (std::size_t row = 0; row < breaks.size(); ++row) {
        const std::optional<Bounds> last = before;
        const std::optional<Bounds> bounds = before = BoundsOf(breaks, row);
        if (row == 0 && bounds && bounds->lowest > 1) {
            set.Doubt(breaks, row, lowest, "begins the first break: lower weights are refused");
        }
        if (!last || !bounds) continue;
        if (bounds->lowest <= last->lowest) {
            set.DoubtAgainst(breaks, row, lowest, row - 1,
                             "is not above {}, where the break before it begins: breaks ascend, "
                             "and of those that hold a weight the first is taken",
                             last->lowest);
        } else if (bounds->lowest <= last->highest) {
            set.DoubtAgainst(breaks, row, lowest, row - 1,
                             "is within the break before it, which goes to {}: up to there the "
                             "weights count as that break's; each begins a pound behind the last",
                             last->highest);
        } else if (bounds->lowest - 1 > last->highest) {
            set.DoubtAgainst(breaks, row, lowest, row - 1,
                             "leaves a gap behind {}, where the break before it ends: weights "
                             "between them are refused",
                             last->highest);
        }
    }
}

/// The defaults name the break from which the other surcharge holds, and may cut the breaks.
void CheckSurchargeBreak(CheckedSet& set) {
    const Table defaults = set.TableOf("DEF");
    const Table breaks = set.TableOf("WGT");
    if (defaults.size() == 0 || breaks.size() == 0) return;
    const Column& index = defaults.column("surcharge_break");
    const Column& cut = defaults.column("breaks_in_use");
    std::string written(defaults.bytes(0, index));
    // What the earlier layout has there is replaced as it is read.
    if (BinaryIn<std::int16_t>(defaults.bytes(0, defaults.column("layout"))) == 0) {
        written[0] = '6';
    }
    const std::optional<int> first = WholeIn(written);
    const int count = static_cast<int>(breaks.size());
    if (!first) {
        set.Doubt(defaults, 0, index, "is no number: the digits that it begins with count, or 0");
        return;
    }
    if (*first < 0 || *first >= count) {
        set.Doubt(defaults, 0, index,
                  "is none of the {} rows of weight-breaks.csv, counted from 0: the surcharge "
                  "below the break holds for every weight",
                  count);
        return;
    }
    if (defaults.bytes(0, cut).front() == '\0') return;
    const std::optional<int> kept = WholeIn(defaults.bytes(0, cut));
    if (!kept) {
        set.Doubt(defaults, 0, cut, "is no number: the digits that it begins with count, or 0");
        return;
    }
    if (*kept == 0 && *first > 0) {
        set.Doubt(defaults, 0, cut,
                  "cuts surcharge_break itself: the {} breaks before it stay, and the surcharge "
                  "below it holds for every weight",
                  *first);
        return;
    }
    const int in_use = *first + *kept;
    if (in_use < 1 || in_use >= count) {
        set.Doubt(defaults, 0, cut,
                  "cuts nothing: with surcharge_break {} it must leave 1 to {} of the {} weight "
                  "breaks, or be left out",
                  *first, count - 1, count);
    }
}

constexpr SetCheck kClassCheckList[] = {CheckClasses, CheckMappedClasses, CheckBreaks,
                                        CheckBreakAscent, CheckSurchargeBreak};

}  // namespace

constinit const std::span<const SetCheck> kClassChecks(kClassCheckList);

}  // namespace cwt
