#include <nlohmann/json.hpp>

#include "bill/bill.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

Json ChargesJson(const std::vector<BreakCharge>& charges) {
    Json entries = Json::array();
    for (const BreakCharge& charge : charges) {
        entries.push_back({{"weight", charge.weight},
                           {"amount", charge.amount},
                           {"raised_to_floor", charge.raised_to_floor}});
    }
    return entries;
}

Json PointJson(const BillPoint& point) {
    return {{"zip", point.zip},
            {"city", point.city},
            {"state", point.state},
            {"terminal", point.terminal},
            {"service", point.service}};
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
    return {{"tariff", bill.tariff},
            {"date", bill.date},
            {"rate_code", bill.rate_code},
            {"origin", PointJson(bill.origin)},
            {"destination", PointJson(bill.destination)},
            {"lines", lines},
            {"deficit", deficit},
            {"total_weight", bill.total_weight},
            {"billed_weight", bill.billed_weight},
            {"gross_charge", bill.gross},
            {"discount_percent", bill.discount_percent},
            {"discount_amount", bill.discount_amount},
            {"net_charge", bill.net},
            {"minimum_charge", bill.minimum},
            {"surcharge", bill.surcharge},
            {"minimum_charges_by_break", ChargesJson(bill.minimum_charges)},
            {"single_shipment_charges_by_break", ChargesJson(bill.single_shipment_charges)}};
}

}  // namespace cwt
