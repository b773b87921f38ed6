// The settings of a set and its user's defaults.
#include <cmath>

#include "tariffs/checks/field_values.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

void CheckZipDigits(CheckedSet& set) {
    const Table settings = set.TableOf("SET");
    if (settings.size() == 0) return;
    const Column& digits = settings.column("zip_digits");
    std::string_view written = settings.bytes(0, digits);
    written = written.substr(0, written.find_last_not_of(' ') + 1);
    if (written == "3" || written == "5" || written == "6") return;
    set.Doubt(settings, 0, digits,
              "is neither 3 nor 5 as they are written: postal codes are then compared by {} "
              "characters, whatever number of digits they are checked for",
              settings.bytes(0, digits).starts_with('3') ? 3 : 5);
}

void CheckFlags(CheckedSet& set) {
    const Table settings = set.TableOf("SET");
    if (settings.size() == 0) return;
    for (const Column& column : settings.columns) {
        const std::string_view flag = settings.bytes(0, column);
        if (column.field->kind != Kind::kFlag || flag == "Y" || flag == "N" || flag == " ") {
            continue;
        }
        // Only this one counts as yes unless it says no.
        const bool counts_as_yes = column.name == "mexico_zip_file";
        set.Doubt(settings, 0, column, "is neither yes nor no, and counts as {}",
                  counts_as_yes ? "yes" : "no");
    }
}

/// The factor of all rates is sent in five digits, four of them decimals.
void CheckRateFactor(CheckedSet& set) {
    const Table defaults = set.TableOf("DEF");
    if (defaults.size() == 0) return;
    constexpr float kLeast = 0.00005F, kMost = 9.99995F;
    const auto is_sent = [](float factor) { return factor >= kLeast && factor < kMost; };
    const Column& column = defaults.column("rate_factor");
    const Column& rate_column = defaults.column("conversion_rate");
    const auto written = BinaryIn<float>(defaults.bytes(0, column));
    const auto rate = BinaryIn<float>(defaults.bytes(0, rate_column));
    const float factor = written != 0 ? written : 1;
    if (!is_sent(factor)) {
        set.Doubt(defaults, 0, column,
                  "has no room in what the engine is sent, 0.0001 to 9.9999: every shipment is "
                  "refused; 1 means none");
    } else if (BinaryIn<std::int16_t>(defaults.bytes(0, defaults.column("conversion"))) != 0 &&
               !is_sent(factor * rate)) {
        set.Doubt(defaults, 0, rate_column,
                  "and the rate factor {} make a factor that has no room in what the engine is "
                  "sent, 0.0001 to 9.9999: every shipment is refused",
                  factor);
    }
}

constexpr SetCheck kSettingsCheckList[] = {CheckZipDigits, CheckFlags, CheckRateFactor};

}  // namespace

constinit const std::span<const SetCheck> kSettingChecks(kSettingsCheckList);

}  // namespace cwt
