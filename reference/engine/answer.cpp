#include "reference/engine/answer.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

void WriteLines(EngineRateRecord& record, const BreakRating& charges) {
    for (std::size_t i = 0; i < kLineCount; ++i) {
        PutAmount(record.ClassLines[i].Rate, charges.lines[i].rate, '0');
        PutAmount(record.ClassLines[i].Charge, charges.lines[i].charge, '0');
    }
    PutAmount(record.ExtraRate, charges.deficit.rate, '0');
    PutNumber(record.ExtraWeight, charges.deficit_weight, '0');
    PutAmount(record.ExtraCharge, charges.deficit.charge, '0');
}

void WriteTotals(EngineRateRecord& record, const Rating& rating) {
    const Lane lane = rating.lane ? *rating.lane : Lane{};
    PutNumber(record.TotalWeight, rating.total_weight, '0');
    PutNumber(record.BilledWeight, rating.charges.billed_weight, '0');
    PutRight(record.RateCode,
             rating.lane ? rating.tariff->ScaleCode(lane.scale).View() : std::string_view{});
    PutAmount(record.MinChargeFirst, lane.minimum, '0');
    PutAmount(record.MinChargeSecond, lane.arbitrary, '0');
    PutAmount(record.DiscountPercent, rating.discount_percent, ' ');
    PutAmount(record.DiscountAmount, rating.discount, ' ');
    PutAmount(record.NetCharge, rating.net, ' ');
}

/// Completes the state and city of a point that was placed.
void WritePoint(std::span<char> state, std::span<char> city, char& service_code,
                const RateBase& base, const RequestPoint& requested, const Point* point) {
    service_code = point ? point->Service() : ' ';
    if (point) {
        PutLeft(state, point->State());
        PutLeft(city, point->City());
    } else if (requested.state.empty()) {
        PutLeft(state, base.states.Find(requested.prefix));
    }
}

/// The "MC" entry of each break with its least net charge, then the "SS" one with its gross charge.
void WriteBreakEntries(EngineRateRecord& record, std::span<const BreakEntry> entries) {
    std::ranges::fill(record.RateTable, '\0');
    std::ranges::fill(record.BreakKinds, ' ');
    std::memset(record.BreakWeights, 0, sizeof record.BreakWeights);
    std::memset(record.BreakAmounts, 0, sizeof record.BreakAmounts);
    std::size_t place = 0;
    for (const BreakEntry& entry : entries) {
        // Negative for a break that is not in use.
        const std::int32_t rate = entry.in_use ? static_cast<std::int32_t>(entry.rate) : -1;
        for (const auto& [kind, amount] : {std::pair('1', entry.net), {'S', entry.gross}}) {
            record.BreakKinds[place] = kind;
            record.BreakWeights[place] = entry.weight;
            record.BreakAmounts[place] = WholeDollars(amount);
            std::memcpy(record.RateTable + place * sizeof rate, &rate, sizeof rate);
            ++place;
        }
    }
    record.BreakEntryCount = static_cast<std::int16_t>(place);
}

}  // namespace

void WriteTables(EngineTablesSection& section, const Tariff& tariff) {
    section = {};
    for (std::size_t i = 0; i < tariff.classes.size(); ++i) {
        std::ranges::copy(tariff.classes[i].View(), section.ClassCodes[i]);
    }
    for (std::size_t i = 0; i < tariff.breaks.size(); ++i) {
        section.WeightBreaks[i] = tariff.breaks[i];
    }
    section.ClassCount = static_cast<std::int16_t>(tariff.classes.size());
    section.WeightBreakCount = static_cast<std::int16_t>(tariff.breaks.size());
}

void WriteEffectiveTable(EfcRecord& record, const Tariff& tariff) {
    const auto date = std::to_string(tariff.effective_date);
    PutLeft(record.TariffName, tariff.name);
    PutRight(record.DatePart1, date.substr(0, 4));
    PutRight(record.DatePart2, date.substr(4, 2));
    PutRight(record.DatePart3, date.substr(6));
    record.EngineByte = ' ';
}

void WriteVersion(EngineVersionBlock& block) {
    block = {};
    std::ranges::copy(std::string_view("Reference engine"), block.TextA);
    // Two texts in neighbouring slots read as one: the engine's version, then its files'.
    std::ranges::copy(std::string_view("1.0"), block.TextB);
    std::ranges::copy(std::string_view(".0"), block.TextC);
    std::ranges::copy(std::string_view("1.0"), block.TextD);
    std::ranges::copy(std::string_view(".0"), block.TextE);
    std::ranges::copy(std::string_view("Class rates per cwt"), block.TextF);
}

void WriteAnswer(EngineRateRecord& record, const RateBase& base, const RateRequest& request,
                 const Rating& rating) {
    PutLeft(record.Status, rating.status == Status::kNone ? "" : StatusCode(rating.status));
    WriteLines(record, rating.charges);
    WriteTotals(record, rating);
    WriteBreakEntries(record, std::span(rating.break_entries).first(rating.break_entry_count));
    record.Tables = {};
    if (rating.tariff) WriteTables(record.Tables, *rating.tariff);
    record.OrigServiceCode = record.DestServiceCode = ' ';
    if (!rating.lane) return;
    WritePoint(record.OrigState, record.OrigCity, record.OrigServiceCode, base, request.origin,
               rating.points.origin.point);
    WritePoint(record.DestState, record.DestCity, record.DestServiceCode, base, request.destination,
               rating.points.destination.point);
}

}  // namespace hundredweight::reference
