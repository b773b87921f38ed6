#include "reference/engine/request.h"

#include <algorithm>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

constexpr std::int32_t kUnchangedRates = 10'000;
constexpr PercentHundredths kHighestPercent = 9999;
constexpr PercentHundredths kEndOfBreaks = 9999;

RequestPoint ReadPoint(std::span<const char> postal_code, std::span<const char> state,
                       std::span<const char> city) {
    RequestPoint point{ColumnText(postal_code), ColumnText(state), ColumnText(city)};
    point.city_chosen = point.city != "None of the above" && point.state != "**";
    point.prefix = PostalPrefix(point.postal_code);
    return point;
}

std::optional<std::int32_t> ReadWeight(std::span<const char> column) {
    std::string_view text = ColumnText(column);
    // Hosts pad with zeros before what the user typed, its blanks included.
    text.remove_prefix(std::min(text.find_first_not_of("0 "), text.size()));
    return text.empty() ? 0 : DigitsValue(text);
}

std::optional<std::int32_t> ReadFactor(std::span<const char> column) {
    const auto text = ColumnText(column);
    const auto factor = text.empty() ? kUnchangedRates : DigitsValue(text);
    return factor == 0 ? std::nullopt : factor;
}

PercentHundredths ReadPercent(std::span<const char> column) {
    const auto value = DigitsValue(ColumnText(column)).value_or(0);
    return value <= kHighestPercent ? value : 0;
}

DiscountList ReadDiscounts(const EngineRateRecord& record) {
    DiscountList list;
    const auto& columns = record.DiscountLine.Values;
    while (list.count < list.breaks.size()) {
        const PercentHundredths value = ReadPercent(columns[1 + list.count]);
        if (value == kEndOfBreaks) break;
        list.breaks[list.count++] = value;
    }
    if (record.DiscountsSent == 'Y') {
        list.flat = ReadPercent(columns[0]);
    } else {
        list.breaks.fill(0);
    }
    return list;
}

}  // namespace

PercentHundredths DiscountList::PercentAt(std::size_t weight_break) const {
    if (flat != 0) return flat;
    return count == 0 ? 0 : breaks[std::min(weight_break, count - 1)];
}

RateRequest ReadRequest(const EngineRateRecord& record) {
    RateRequest request;
    request.tariff_name = ColumnText(record.TariffName);
    request.date = ColumnText(record.TariffDate);
    request.origin = ReadPoint(record.OrigZip, record.OrigState, record.OrigCity);
    request.destination = ReadPoint(record.DestZip, record.DestState, record.DestCity);
    for (std::size_t i = 0; i < kLineCount; ++i) {
        const EngineClassLine& line = record.ClassLines[i];
        request.lines[i] = {ColumnText(line.ClassCode), ReadWeight(line.Weight)};
    }
    request.factor = ReadFactor(record.Factor);
    request.discounts = ReadDiscounts(record);
    return request;
}

}  // namespace hundredweight::reference
