#include <nlohmann/json.hpp>

#include "bill/bill.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

Json ChargesJson(const std::vector<BreakCharge>& charges) {
    Json entries = Json::array();
    for (const BreakCharge& charge : charges) {
        entries.push_back({{"label", charge.label},
                           {"weight", charge.weight},
                           {"amount", charge.amount},
                           {"raised_to_floor", charge.raised_to_floor}});
    }
    return entries;
}

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json PointJson(const BillPoint& point) {
    return {{"zip", point.zip},
            {"city", TextOrNull(point.city)},
            {"state", TextOrNull(point.state)},
            {"terminal", TextOrNull(point.terminal)},
            {"service", TextOrNull(point.service)}};
}

/// MM-DD-YYYY as YYYY-MM-DD.
std::string IsoDate(const std::string& date) {
    return date.substr(6) + "-" + date.substr(0, 5);
}

Json TransitJson(const std::optional<TransitDays>& days) {
    if (!days) return nullptr;
    const auto number = [](std::optional<int> value) {
        return value ? Json(*value) : Json(nullptr);
    };
    return {{"standard", number(days->standard)},
            {"guaranteed", number(days->guaranteed)},
            {"border", number(days->border)}};
}

}  // namespace

Json BillJson(const Bill& bill) {
    Json lines = Json::array();
    for (const BillLine& line : bill.lines) {
        lines.push_back({{"class", line.class_code},
                         {"rated_as", line.rated_as},
                         {"weight", line.weight},
                         {"rate", line.rate},
                         {"charge", line.charge}});
    }
    Json deficit = nullptr;
    if (bill.deficit.weight != 0) {
        deficit = {{"weight", bill.deficit.weight},
                   {"rate", bill.deficit.rate},
                   {"charge", bill.deficit.charge}};
    }
    return {{"schema", "hundredweight/bill/1"},
            {"id", TextOrNull(bill.id)},
            {"description", bill.description},
            {"currency", "USD"},
            {"tariff",
             {{"name", bill.tariff}, {"date", IsoDate(bill.date)}, {"rate_code", bill.rate_code}}},
            {"origin", PointJson(bill.origin)},
            {"destination", PointJson(bill.destination)},
            {"transit_days", TransitJson(bill.transit_days)},
            {"lines", lines},
            {"deficit", deficit},
            {"total_weight", bill.total_weight},
            {"billed_weight", bill.billed_weight},
            {"gross_charge", bill.gross},
            {"discount", {{"percent", bill.discount_percent}, {"amount", bill.discount_amount}}},
            {"net_charge", bill.net},
            {"minimum_charge", bill.minimum},
            {"surcharge", bill.surcharge},
            {"total_due", bill.total_due},
            {"charges_by_break",
             {{"minimum", ChargesJson(bill.minimum_charges)},
              {"single_shipment", ChargesJson(bill.single_shipment_charges)}}},
            {"notes", bill.notes}};
}

}  // namespace cwt
