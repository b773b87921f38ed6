// Minimum charges by postal-code and rate-code range, of which the first record that fits holds.
#include <algorithm>

#include "tariffs/checks/box_index.h"
#include "tariffs/checks/field_values.h"
#include "tariffs/checks/range_ends.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

constexpr std::size_t kZipWidth = 5;
constexpr std::size_t kRateCodeWidth = 6;
constexpr std::string_view kOneWay = "F";

/// The table with its columns.
struct Minimums {
    explicit Minimums(const CheckedSet& set) : table(set.TableOf("ZMC")) {}

    Table table;
    const Column& direction = table.column("direction");
    RangeEnds first{table.column("first_low"), table.column("first_high"), kZipWidth};
    RangeEnds second{table.column("second_low"), table.column("second_high"), kZipWidth};
    RangeEnds codes{table.column("rate_code_low"), table.column("rate_code_high"), kRateCodeWidth};

    bool IsOneWay(std::size_t row) const { return table.bytes(row, direction) == kOneWay; }
    /// Whether the record can fit a shipment. Either way, the lower postal code is looked for in
    /// the first range.
    bool CanFit(std::size_t row) const {
        const auto has_any = [&](const RangeEnds& ends) {
            return ends.Low(table, row) <= ends.High(table, row);
        };
        return has_any(first) && has_any(second) && has_any(codes) &&
               (IsOneWay(row) || first.Low(table, row) <= second.High(table, row));
    }
};

void CheckMinimumRanges(CheckedSet& set) {
    const Minimums minimums(set);
    const Table& table = minimums.table;
    for (std::size_t row = 0; row < table.size(); ++row) {
        // All three, so that everything is said at once.
        const bool has_first = CheckPostalCodes(set, table, row, minimums.first, kZipWidth);
        const bool has_second = CheckPostalCodes(set, table, row, minimums.second, kZipWidth);
        CheckCodes(set, table, row, minimums.codes, kRateCodeWidth);
        if (has_first && has_second && !minimums.IsOneWay(row) &&
            minimums.first.Low(table, row) > minimums.second.High(table, row)) {
            set.Doubt(table, row, minimums.first.low,
                      "is above the whole second range: either way, the lower of the two postal "
                      "codes is looked for in the first range, so that nothing ever fits; "
                      "exchange the ranges");
        }
    }
}

void CheckDirections(CheckedSet& set) {
    const Minimums minimums(set);
    for (std::size_t row = 0; row < minimums.table.size(); ++row) {
        const std::string_view direction = minimums.table.bytes(row, minimums.direction);
        if (direction == kOneWay || direction == " ") continue;
        set.Doubt(minimums.table, row, minimums.direction,
                  "counts as either way, as all do but F, from the first range to the second; "
                  "leave it empty if that is meant");
    }
}

void CheckAmounts(CheckedSet& set) {
    const Table table = set.TableOf("ZMC");
    for (const char* name : {"minimum_dollars", "floor_dollars"}) {
        const Column& column = table.column(name);
        for (std::size_t row = 0; row < table.size(); ++row) {
            const auto amount = BinaryIn<float>(table.bytes(row, column));
            if (!(amount >= 0)) {
                set.Doubt(table, row, column, "is no charge; 0 is written where there is none");
            }
        }
    }
}

std::uint64_t NumberOf(std::string_view characters) {
    std::uint64_t number = 0;
    for (const char c : characters) number = number << 8U | static_cast<unsigned char>(c);
    return number;
}

Box BoxOf(const Minimums& minimums, std::size_t row) {
    Box box{};
    std::size_t at = 0;
    for (const RangeEnds* ends : {&minimums.first, &minimums.second, &minimums.codes}) {
        box[at++] = NumberOf(ends->Low(minimums.table, row));
        box[at++] = ~NumberOf(ends->High(minimums.table, row));
    }
    return box;
}

/// A one-way box as either-way records see it: the lower postal codes of its pairs, the higher.
Box LowerAndHigher(const Box& box) {
    return {std::min(box[0], box[2]),
            std::max(box[1], box[3]),
            std::max(box[0], box[2]),
            std::min(box[1], box[3]),
            box[4],
            box[5]};
}

/// An either-way box without what cannot be the lower postal code of a pair, or the higher.
Box Narrowed(const Box& box) {
    return {box[0], std::max(box[1], box[3]), std::max(box[0], box[2]), box[3], box[4], box[5]};
}

/// A narrowed either-way box as one-way records see it: each postal code at both ends.
Box BothWays(const Box& box) {
    return {box[0], box[3], box[0], box[3], box[4], box[5]};
}

/// A record that one before it hides. What only several before it hide together is not found.
void CheckHiddenMinimums(CheckedSet& set) {
    const Minimums minimums(set);
    const Table& table = minimums.table;
    BoxIndex one_way;
    BoxIndex either_way;
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (!minimums.CanFit(row)) continue;
        (minimums.IsOneWay(row) ? one_way : either_way).Add(BoxOf(minimums, row), row);
    }
    one_way.Build();
    either_way.Build();
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (!minimums.CanFit(row)) continue;
        const Box own = BoxOf(minimums, row);
        const bool is_one_way = minimums.IsOneWay(row);
        const Box box = is_one_way ? own : Narrowed(own);
        auto hiding = one_way.Around(is_one_way ? box : BothWays(box), row);
        if (!hiding) hiding = either_way.Around(is_one_way ? LowerAndHigher(box) : box, row);
        if (hiding) {
            set.DoubtAgainst(table, row, minimums.first.low, hiding,
                             "begins a record that is never reached, as one before it fits all "
                             "that it fits, and the first that fits holds; put the narrower first");
        }
        if (one_way.is_spent() || either_way.is_spent()) {
            set.Note(table, fmt::format("{} of {} records were looked at for being hidden by one "
                                        "before them: too many overlap",
                                        row, table.size()));
            return;
        }
    }
}

constexpr SetCheck kMinimumCheckList[] = {CheckMinimumRanges, CheckDirections, CheckAmounts,
                                          CheckHiddenMinimums};

}  // namespace

constinit const std::span<const SetCheck> kMinimumChecks(kMinimumCheckList);

}  // namespace cwt
