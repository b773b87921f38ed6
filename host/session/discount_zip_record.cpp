#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

#include "session/discount_origin.h"
#include "text/field_text.h"

namespace cwt {
namespace {

/// A postal code as ranges of the profile are searched by it: a short letter code stands for all
/// codes that begin with it.
std::array<char, 7> ZipKey(const char (&zip)[7], std::size_t length) {
    std::array<char, sizeof zip> key = {};
    const std::size_t size = strnlen(zip, sizeof zip);
    std::memcpy(key.data(), zip, size);
    const bool letter = (zip[0] >= 'A' && zip[0] <= 'Z') || (zip[0] >= 'a' && zip[0] <= 'z');
    if (letter && size < length) std::memcpy(key.data() + 3, "0A", 2);
    return key;
}

/// The number of a record's characters that count.
std::size_t ZipLength(const RateContext& context) {
    return context.ZipLength[0] == '3' ? 3 : 5;
}

bool IsOfStates(const ZipDiscountRecord& record, std::size_t length) {
    const std::string_view low(record.OrigLow, length);
    return low.find_first_not_of(' ') == low.npos;
}

bool Fits(const RatedShipment& rated, const ZipDiscountRecord& record) {
    const std::size_t length = ZipLength(rated.context);
    if (IsOfStates(record, length)) {
        const auto is_in = [](std::string state, const char(&of_record)[7]) {
            state.resize(2, '\0');
            return std::memcmp(state.data(), of_record, 2) == 0;
        };
        return is_in(rated.origin.state, record.OrigHigh) &&
               is_in(rated.destination.state, record.DestHigh);
    }
    const auto is_within = [&](const char(&zip)[7], const char(&low)[7], const char(&high)[7]) {
        const auto key = ZipKey(zip, length);
        return std::memcmp(key.data(), low, length) >= 0 &&
               std::memcmp(key.data(), high, length) <= 0;
    };
    return is_within(rated.context.OrigZip, record.OrigLow, record.OrigHigh) &&
           is_within(rated.context.DestZip, record.DestLow, record.DestHigh);
}

std::optional<int> FindZipRecord(const RatedShipment& rated) {
    for (int i = 0; i < CountZipRecords(rated.context); ++i) {
        if (Fits(rated, rated.context.Profile.ZipDiscounts[i])) return i;
    }
    return std::nullopt;
}

bool HasSettled(const RateContext& context, const ZipDiscountRecord& record) {
    bool agrees = context.DiscountFloor == ValueOf(record.Floor);
    for (std::size_t i = 0; i < kDiscountBreaks; ++i) {
        const float percent = context.DiscountBreakPercent[i];
        agrees = agrees && percent == ValueOf(record.BreakPercent[i]);
    }
    return agrees;
}

}  // namespace

int CountZipRecords(const RateContext& context) {
    return std::clamp(+context.Profile.ZipDiscountCount, 0,
                      static_cast<int>(std::size(context.Profile.ZipDiscounts)));
}

DiscountOrigin DiscountOfZipRecord(const RatedShipment& rated, std::size_t weight_break) {
    const std::optional<int> found = FindZipRecord(rated);
    if (!found || !HasSettled(rated.context, rated.context.Profile.ZipDiscounts[*found])) {
        return {
            "The discount is that of a ZIP or state record of the profile, which one is not "
            "known.",
            {rated.Profile("ZipDiscounts")}};
    }
    const ZipDiscountRecord& record = rated.context.Profile.ZipDiscounts[*found];
    const std::string place = fmt::format("ZipDiscounts[{}]", *found);
    DiscountOrigin origin;
    origin.words =
        fmt::format("The discount is that of record {} of the {} in profile {}: ", *found + 1,
                    CountZipRecords(rated.context), TextOf(rated.context.Profile.ProfileName));
    if (IsOfStates(record, ZipLength(rated.context))) {
        origin.words +=
            fmt::format("from {} to {}.", TextOf(record.OrigHigh, 2), TextOf(record.DestHigh, 2));
    } else {
        origin.words +=
            fmt::format("from postal codes {}-{} to {}-{}.", TextOf(record.OrigLow),
                        TextOf(record.OrigHigh), TextOf(record.DestLow), TextOf(record.DestHigh));
    }
    origin.sources = {rated.Profile(place)};
    origin.has_values = true;
    origin.percent = rated.Profile(fmt::format("{}.BreakPercent[{}]", place, weight_break));
    origin.flat = rated.Profile(place + ".FlatPercent");
    origin.floor = rated.Profile(place + ".Floor");
    return origin;
}

}  // namespace cwt
