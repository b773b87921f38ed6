#include "tariffs/checks/range_ends.h"

#include "tariffs/checks/field_values.h"

namespace cwt {
namespace {

constexpr std::string_view kPostalCharacters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

}  // namespace

bool CheckOrder(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends) {
    if (ends.Low(table, row) <= ends.High(table, row)) return true;
    set.Doubt(table, row, ends.low,
              "is above {}, the other end: nothing is in the range, and the row is never used",
              ends.high.name);
    return false;
}

bool CheckCodes(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends,
                std::size_t shortest) {
    if (!CheckOrder(set, table, row, ends)) return false;
    if (Trimmed(ends.High(table, row)).size() < shortest) {
        set.Doubt(table, row, ends.high,
                  "ends the range before all codes that begin so and go on, as codes have {} "
                  "characters: fill it up with the highest, 9 or Z",
                  shortest);
    }
    return true;
}

bool CheckPostalCodes(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends,
                      std::size_t shortest) {
    for (const Column* column : {&ends.low, &ends.high}) {
        std::string_view code = table.bytes(row, *column);
        code = code.substr(0, code.find_last_not_of(std::string_view(" \0", 2)) + 1);
        if (code.find_first_not_of(kPostalCharacters) != code.npos) {
            set.Doubt(table, row, *column,
                      "has a character that no postal code has: they are compared as digits and "
                      "capital letters, without blanks and hyphens");
            return false;
        }
    }
    return CheckCodes(set, table, row, ends, shortest);
}

}  // namespace cwt
