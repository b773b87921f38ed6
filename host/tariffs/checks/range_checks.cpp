// Tables that are searched by halves: provinces, point codes and the tariffs between them.
#include <set>

#include "tariffs/checks/field_values.h"
#include "tariffs/checks/range_ends.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

bool IsLetter(char character) {
    return ('A' <= character && character <= 'Z') || ('a' <= character && character <= 'z');
}

/// Doubts a range that does not lie behind all before it. `highest` is the row of these that
/// reaches highest.
void CheckAscent(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends,
                 std::size_t& highest) {
    if (row > 0 && ends.Low(table, row) <= ends.High(table, highest)) {
        set.DoubtAgainst(table, row, ends.low, highest,
                         "is not above the ranges before it: they are searched by halves, so that "
                         "codes of ranges that overlap or do not ascend are found wrongly or not "
                         "at all; sort them, each behind the end of the one before it");
    }
    if (ends.High(table, row) > ends.High(table, highest)) highest = row;
}

void CheckProvinces(CheckedSet& set) {
    const Table provinces = set.TableOf("SCC");
    const RangeEnds ends{provinces.column("first"), provinces.column("last"), 3};
    std::size_t highest = 0;
    for (std::size_t row = 0; row < provinces.size(); ++row) {
        CheckAscent(set, provinces, row, ends, highest);
        if (!CheckPostalCodes(set, provinces, row, ends, 3)) continue;
        if (!IsLetter(ends.High(provinces, row)[0])) {
            set.Doubt(provinces, row, ends.high,
                      "ends the range before the letters: ZIP codes of digits have their states "
                      "in states.csv, and nobody looks for them here");
        }
    }
}

void CheckPointCodes(CheckedSet& set) {
    const Table points = set.TableOf("CBS");
    const RangeEnds ends{points.column("first"), points.column("last"), 6};
    std::size_t highest = 0;
    for (std::size_t row = 0; row < points.size(); ++row) {
        CheckAscent(set, points, row, ends, highest);
        // ZIP codes of digits are compared with five characters.
        const bool has_letter = IsLetter(ends.High(points, row)[0]);
        CheckPostalCodes(set, points, row, ends, has_letter ? 6 : 5);
    }
}

void CheckTariffPairs(CheckedSet& set) {
    const Table pairs = set.TableOf("CMT");
    const Column& origin = pairs.column("origin_point_code");
    const auto key = [&](std::size_t row) {
        return pairs.row(row).substr(0, 2 * origin.field->width);
    };
    for (std::size_t row = 1; row < pairs.size(); ++row) {
        if (key(row) == key(row - 1)) {
            set.DoubtAgainst(pairs, row, origin, row - 1,
                             "is there twice with this destination, and chance decides which of "
                             "the tariffs a shipment has; leave one");
        } else if (key(row) < key(row - 1)) {
            set.DoubtAgainst(pairs, row, origin, row - 1,
                             "and its destination sort before the pair above: pairs are searched "
                             "by halves, so that shipments find no tariff; sort the rows");
        }
    }
}

/// A pair is looked for by the point codes of two postal codes.
void CheckPairsPoints(CheckedSet& set) {
    const Table points = set.TableOf("CBS");
    const Table pairs = set.TableOf("CMT");
    if (points.size() == 0) return;
    std::set<std::string_view> known;
    const Column& code = points.column("point_code");
    for (std::size_t row = 0; row < points.size(); ++row) known.insert(points.bytes(row, code));
    for (const char* name : {"origin_point_code", "destination_point_code"}) {
        const Column& column = pairs.column(name);
        std::string_view last;
        for (std::size_t row = 0; row < pairs.size(); ++row) {
            const std::string_view point = pairs.bytes(row, column);
            if (point != last && !known.contains(point)) {
                set.Doubt(pairs, row, column,
                          "is the point code of no postal code in point-codes.csv, so that no "
                          "shipment has this tariff");
            } else {
                last = point;
            }
        }
    }
}

void CheckTariffNames(CheckedSet& set) {
    const Table pairs = set.TableOf("CMT");
    const Column& tariff = pairs.column("tariff");
    constexpr std::size_t kDecidingCharacter = 3;
    for (std::size_t row = 0; row < pairs.size(); ++row) {
        if (pairs.bytes(row, tariff)[kDecidingCharacter] != ' ') continue;
        set.Doubt(pairs, row, tariff,
                  "has no fourth character: such a tariff is rated with the standard classes, "
                  "whatever it has of its own");
    }
}

constexpr SetCheck kRangeCheckList[] = {CheckProvinces, CheckPointCodes, CheckTariffPairs,
                                        CheckPairsPoints, CheckTariffNames};

}  // namespace

constinit const std::span<const SetCheck> kRangeChecks(kRangeCheckList);

}  // namespace cwt
