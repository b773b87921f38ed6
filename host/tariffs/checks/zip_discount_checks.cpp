// The discounts of profiles by postal codes, of which the first record that fits holds.
#include <algorithm>

#include "tariffs/checks/discount_terms.h"
#include "tariffs/checks/field_values.h"
#include "tariffs/checks/range_ends.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

/// The discounts of all profiles, with their columns.
struct ZipDiscounts {
    explicit ZipDiscounts(const CheckedSet& set)
        : profiles(set.TableOf("PROFILE.FIL")),
          table(set.TableOf("PROFILE.FIL", "profile-zip-discounts.csv")),
          compared(ComparedCharacters(set)) {}

    Table profiles;
    Table table;
    std::size_t compared;
    RangeEnds origin{table.column("origin_first"), table.column("origin_last"), compared};
    RangeEnds destination{table.column("destination_first"), table.column("destination_last"),
                          compared};

    std::size_t of_each() const { return table.inner->count; }
    /// Rows of a profile that it says are in use, and that there can be.
    std::size_t CountOf(std::size_t profile) const {
        const auto count =
            BinaryIn<std::int32_t>(profiles.bytes(profile, profiles.column("zip_discount_count")));
        return count < 0 ? 0 : std::min(static_cast<std::size_t>(count), of_each());
    }
    bool IsWritten(std::size_t row) const {
        return table.row(row).find_first_not_of('\0') != std::string_view::npos;
    }
    /// Whether a row is between two states.
    bool IsOfStates(std::size_t row) const {
        return origin.Low(table, row).find_first_not_of(' ') == std::string_view::npos;
    }
    std::string_view State(std::size_t row, const RangeEnds& ends) const {
        return table.bytes(row, ends.high).substr(0, 2);
    }
    /// Whether a row fits all that another fits.
    bool IsAround(std::size_t row, std::size_t other) const {
        if (IsOfStates(row) != IsOfStates(other)) return false;
        const auto holds = [&](const RangeEnds& ends) {
            return IsOfStates(row) ? State(row, ends) == State(other, ends)
                                   : ends.Low(table, row) <= ends.Low(table, other) &&
                                         ends.High(table, row) >= ends.High(table, other);
        };
        return holds(origin) && holds(destination);
    }

 private:
    static std::size_t ComparedCharacters(const CheckedSet& set) {
        const Table settings = set.TableOf("SET");
        constexpr std::size_t kShort = 3, kUsual = 5;
        return settings.size() > 0 &&
                       settings.bytes(0, settings.column("zip_digits")).starts_with('3')
                   ? kShort
                   : kUsual;
    }
};

void CheckZipDiscountRows(CheckedSet& set) {
    const ZipDiscounts discounts(set);
    const Table& table = discounts.table;
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (!discounts.IsWritten(row)) continue;
        CheckDiscountTerms(set, table, row);
        if (!discounts.IsOfStates(row)) {
            CheckPostalCodes(set, table, row, discounts.origin, discounts.compared);
            CheckPostalCodes(set, table, row, discounts.destination, discounts.compared);
            continue;
        }
        for (const RangeEnds* ends : {&discounts.origin, &discounts.destination}) {
            const std::string_view state = discounts.State(row, *ends);
            const auto is_letter = [](char c) { return 'A' <= c && c <= 'Z'; };
            if (std::ranges::all_of(state, is_letter)) continue;
            set.Doubt(table, row, ends->high,
                      "is no state in two capital letters, which a row without origin_first "
                      "needs: it never fits");
        }
    }
}

void CheckZipDiscountCounts(CheckedSet& set) {
    const ZipDiscounts discounts(set);
    const Table& profiles = discounts.profiles;
    const Column& column = profiles.column("zip_discount_count");
    for (std::size_t profile = 0; profile < profiles.size(); ++profile) {
        std::size_t rows = 0;
        std::size_t last = 0;
        for (std::size_t i = 0; i < discounts.of_each(); ++i) {
            if (!discounts.IsWritten(profile * discounts.of_each() + i)) continue;
            ++rows;
            last = i + 1;
        }
        const auto told = BinaryIn<std::int32_t>(profiles.bytes(profile, column));
        if (told >= 0 && static_cast<std::size_t>(told) == rows && rows == last) continue;
        set.Doubt(profiles, profile, column,
                  "is not how many rows profile-zip-discounts.csv has for the profile: {}, the "
                  "last numbered {}; rows behind the count are not read, and rows that are not "
                  "there fit nothing",
                  rows, last);
    }
}

void CheckHiddenZipDiscounts(CheckedSet& set) {
    const ZipDiscounts discounts(set);
    for (std::size_t profile = 0; profile < discounts.profiles.size(); ++profile) {
        const std::size_t first = profile * discounts.of_each();
        const std::size_t end = first + discounts.CountOf(profile);
        for (std::size_t row = first + 1; row < end; ++row) {
            for (std::size_t before = first; before < row; ++before) {
                if (!discounts.IsWritten(before) || !discounts.IsWritten(row) ||
                    !discounts.IsAround(before, row)) {
                    continue;
                }
                set.DoubtAgainst(discounts.table, row, discounts.origin.low, before,
                                 "begins a discount that is never given, as one before it fits "
                                 "all that it fits, and the first that fits holds");
                break;
            }
        }
    }
}

constexpr SetCheck kZipDiscountCheckList[] = {CheckZipDiscountRows, CheckZipDiscountCounts,
                                              CheckHiddenZipDiscounts};

}  // namespace

constinit const std::span<const SetCheck> kZipDiscountChecks(kZipDiscountCheckList);

}  // namespace cwt
