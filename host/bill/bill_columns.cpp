#include "bill/bill_columns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace cwt {
namespace {

using enum ColumnType;

std::string DaysText(const std::optional<TransitDays>& days,
                     std::optional<int> TransitDays::*which) {
    return days && (*days).*which ? fmt::to_string(*((*days).*which)) : "";
}

std::string DeficitText(const Bill& bill, const std::string& text) {
    return bill.deficit.weight != 0 ? text : "";
}

/// The lowest weight of the break that the billed weight lies in.
std::string WeightBreakText(const Bill& bill) {
    const auto& charges =
        bill.single_shipment_charges.empty() ? bill.minimum_charges : bill.single_shipment_charges;
    const BreakCharge* found = nullptr;
    for (const BreakCharge& charge : charges) {
        const bool holds = charge.weight <= bill.billed_weight;
        if (holds && (found == nullptr || found->weight <= charge.weight)) found = &charge;
    }
    return found != nullptr ? fmt::to_string(found->weight) : "";
}

constexpr BillColumn<Bill> kBeforeLines[] = {
    {"description", kText, [](const Bill& bill) { return bill.description; }},
    {"currency", kText, [](const Bill&) -> std::string { return "USD"; }},
    {"tariff", kText, [](const Bill& bill) { return bill.tariff; }},
    {"tariff_date", kText, [](const Bill& bill) { return IsoDate(bill.date); }},
    {"rate_code", kText, [](const Bill& bill) { return bill.rate_code; }},
    {"origin_zip", kText, [](const Bill& bill) { return bill.origin.zip; }},
    {"origin_city", kText, [](const Bill& bill) { return bill.origin.city; }},
    {"origin_state", kText, [](const Bill& bill) { return bill.origin.state; }},
    {"origin_terminal", kText, [](const Bill& bill) { return bill.origin.terminal; }},
    {"origin_service", kText, [](const Bill& bill) { return bill.origin.service; }},
    {"destination_zip", kText, [](const Bill& bill) { return bill.destination.zip; }},
    {"destination_city", kText, [](const Bill& bill) { return bill.destination.city; }},
    {"destination_state", kText, [](const Bill& bill) { return bill.destination.state; }},
    {"destination_terminal", kText, [](const Bill& bill) { return bill.destination.terminal; }},
    {"destination_service", kText, [](const Bill& bill) { return bill.destination.service; }},
    {"transit_days_standard", kWhole,
     [](const Bill& bill) { return DaysText(bill.transit_days, &TransitDays::standard); }},
    {"transit_days_guaranteed", kWhole,
     [](const Bill& bill) { return DaysText(bill.transit_days, &TransitDays::guaranteed); }},
    {"transit_days_border", kWhole,
     [](const Bill& bill) { return DaysText(bill.transit_days, &TransitDays::border); }}};

constexpr BillColumn<BillLine> kLine[] = {
    {"class", kText, [](const BillLine& line) { return line.class_code; }},
    {"rated_as", kText, [](const BillLine& line) { return line.rated_as; }},
    {"weight", kWhole, [](const BillLine& line) { return fmt::to_string(line.weight); }},
    {"rate", kAmount, [](const BillLine& line) { return line.rate; }},
    {"charge", kAmount, [](const BillLine& line) { return line.charge; }}};

constexpr BillColumn<Bill> kBehindLines[] = {
    {"deficit_weight", kWhole,
     [](const Bill& bill) { return DeficitText(bill, fmt::to_string(bill.deficit.weight)); }},
    {"deficit_rate", kAmount,
     [](const Bill& bill) { return DeficitText(bill, bill.deficit.rate); }},
    {"deficit_charge", kAmount,
     [](const Bill& bill) { return DeficitText(bill, bill.deficit.charge); }},
    {"total_weight", kWhole, [](const Bill& bill) { return fmt::to_string(bill.total_weight); }},
    {"billed_weight", kWhole, [](const Bill& bill) { return fmt::to_string(bill.billed_weight); }},
    {"weight_break", kWhole, WeightBreakText},
    {"gross_charge", kAmount, [](const Bill& bill) { return bill.gross; }},
    {"discount_percent", kPercent, [](const Bill& bill) { return bill.discount_percent; }},
    {"discount_amount", kAmount, [](const Bill& bill) { return bill.discount_amount; }},
    {"net_charge", kAmount, [](const Bill& bill) { return bill.net; }},
    {"minimum_charge", kAmount, [](const Bill& bill) { return bill.minimum; }},
    {"surcharge", kAmount, [](const Bill& bill) { return bill.surcharge; }},
    {"total_due", kAmount, [](const Bill& bill) { return bill.total_due; }},
    {"notes", kText, [](const Bill& bill) { return fmt::to_string(fmt::join(bill.notes, "; ")); }}};

}  // namespace

std::span<const BillColumn<Bill>> ColumnsBeforeLines() {
    return kBeforeLines;
}

std::span<const BillColumn<BillLine>> LineColumns() {
    return kLine;
}

std::span<const BillColumn<Bill>> ColumnsBehindLines() {
    return kBehindLines;
}

}  // namespace cwt
