#include "reference/engine/answer.h"

#include <algorithm>
#include <iterator>

#include "reference/engine/alternatives.h"
#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

void PutZeroPadded(std::span<char> column, std::string_view text) {
    PutRight(column, text, '0');
}

void WriteLines(EngineRateRecord& record, const BreakRating& charges) {
    for (std::size_t i = 0; i < kLineCount; ++i) {
        PutZeroPadded(record.ClassLines[i].Rate, AmountText(charges.lines[i].rate));
        PutZeroPadded(record.ClassLines[i].Charge, AmountText(charges.lines[i].charge));
    }
    PutZeroPadded(record.ExtraRate, AmountText(charges.deficit.rate));
    PutZeroPadded(record.ExtraWeight, std::to_string(charges.deficit_weight));
    PutZeroPadded(record.ExtraCharge, AmountText(charges.deficit.charge));
}

void WriteTotals(EngineRateRecord& record, const Rating& rating) {
    PutZeroPadded(record.TotalWeight, std::to_string(rating.total_weight));
    PutZeroPadded(record.BilledWeight, std::to_string(rating.charges.billed_weight));
    PutRight(record.RateCode, rating.lane ? rating.lane->scale : "");
    PutZeroPadded(record.MinChargeFirst, AmountText(rating.lane ? rating.lane->minimum : 0));
    PutZeroPadded(record.MinChargeSecond, AmountText(rating.lane ? rating.lane->arbitrary : 0));
    PutRight(record.DiscountPercent, AmountText(rating.discount_percent));
    PutRight(record.DiscountAmount, AmountText(rating.discount));
    PutRight(record.NetCharge, AmountText(rating.net));
}

/// Completes the state and city of a point that was placed.
void WritePoint(std::span<char> state, std::span<char> city, char& service_code,
                const RateBase& base, const RequestPoint& requested) {
    const Point* point = FindPoint(base, requested);
    service_code = point ? point->service : ' ';
    if (point) {
        PutLeft(state, point->state);
        PutLeft(city, point->city);
    } else if (requested.state.empty()) {
        PutLeft(state, base.StateOf(requested.postal_code));
    }
}

struct BreakEntryColumns {
    char kind;
    std::int32_t weight;
    std::int32_t dollars;
    std::int32_t rate;  ///< Negative for a break that is not in use.
};

/// The "MC" entry of each break with its least net charge, then the "SS" one with its gross charge.
void WriteBreakEntries(EngineRateRecord& record, const std::vector<BreakEntry>& entries) {
    std::ranges::fill(record.RateTable, '\0');
    std::ranges::fill(record.BreakKinds, ' ');
    std::vector<BreakEntryColumns> rows;
    for (const BreakEntry& entry : entries) {
        const auto rate = entry.in_use ? static_cast<std::int32_t>(entry.rate) : -1;
        rows.push_back({'1', entry.weight, WholeDollars(entry.net), rate});
        rows.push_back({'S', entry.weight, WholeDollars(entry.gross), rate});
    }
    rows.resize(std::size(record.BreakKinds), {' ', 0, 0, 0});
    for (std::size_t i = 0; i < rows.size(); ++i) {
        record.BreakKinds[i] = rows[i].kind;
        record.BreakWeights[i] = rows[i].weight;
        record.BreakAmounts[i] = rows[i].dollars;
        std::copy_n(reinterpret_cast<const char*>(&rows[i].rate), sizeof rows[i].rate,
                    record.RateTable + i * sizeof rows[i].rate);
    }
    const auto count = std::min(2 * entries.size(), rows.size());
    record.BreakEntryCount = static_cast<std::int16_t>(count);
}

}  // namespace

void WriteTables(EngineTablesSection& section, const Tariff& tariff) {
    section = {};
    for (std::size_t i = 0; i < tariff.classes.size(); ++i) {
        std::ranges::copy(tariff.classes[i], section.ClassCodes[i]);
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
    WriteBreakEntries(record, rating.break_entries);
    record.Tables = {};
    if (rating.tariff) WriteTables(record.Tables, *rating.tariff);
    record.OrigServiceCode = record.DestServiceCode = ' ';
    if (!rating.lane) return;
    WritePoint(record.OrigState, record.OrigCity, record.OrigServiceCode, base, request.origin);
    WritePoint(record.DestState, record.DestCity, record.DestServiceCode, base,
               request.destination);
}

}  // namespace hundredweight::reference
