#include "bill/freight_bill.h"

#include <fmt/core.h>

#include <cstdlib>
#include <iterator>
#include <nlohmann/json.hpp>
#include <vector>

#include "text/field_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

struct BillLine {
    std::string class_code;
    int weight;  ///< Pounds.
    std::string rate;
    std::string charge;
};

struct BillPoint {
    std::string zip;
    std::string city;
    std::string state;
    std::string terminal;  ///< Empty when no service guide was asked.
    std::string service;
};

struct Bill {
    std::string tariff;
    std::string date;
    std::string rate_code;
    BillPoint origin;
    BillPoint destination;
    std::vector<BillLine> lines;
    BillLine deficit;  ///< Weight 0 when there is none.
    int total_weight;
    int billed_weight;
    std::string gross;
    std::string discount_percent;
    std::string discount_amount;
    std::string surcharge;
    std::string minimum;
    std::string net;
};

int WeightOf(const std::string& text) {
    return std::atoi(text.c_str());
}

/// An amount without the zeros that pad it.
std::string Unpadded(std::string amount) {
    while (amount.size() > 1 && amount[0] == '0' && amount[1] != '.') amount.erase(0, 1);
    return amount;
}

/// The class that a line was rated at, marked when a profile put it in the place of another.
std::string RatedClass(const RateContext& context, std::size_t line) {
    if (context.LineClassMark[line][0] != '*') return TextOf(context.LineClass[line]);
    return TextOf(context.ClassTable[context.LineClassIndex[line]]) + "*";
}

Bill ReadBill(const RateContext& context) {
    Bill bill;
    bill.tariff = TextOf(context.TariffName);
    bill.date = TextOf(context.LevelFileDate);
    bill.rate_code = TextOf(context.RateCode);
    bill.origin = {TextOf(context.OrigZip), TextOf(context.OrigCity), TextOf(context.OrigState),
                   TextOf(context.OrigTerminal), TextOf(&context.OrigServiceCode, 1)};
    bill.destination = {TextOf(context.DestZip), TextOf(context.DestCity),
                        TextOf(context.DestState), TextOf(context.DestTerminal),
                        TextOf(&context.DestServiceCode, 1)};
    for (std::size_t i = 0; i < std::size(context.LineClass); ++i) {
        const int weight = WeightOf(TextOf(context.LineWeight[i]));
        if (weight == 0) continue;
        bill.lines.push_back({RatedClass(context, i), weight, TextOf(context.LineRateText[i]),
                              TextOf(context.LineChargeText[i])});
    }
    bill.deficit = {"", WeightOf(TextOf(context.ExtraWeightText)), TextOf(context.ExtraRateText),
                    TextOf(context.ExtraChargeText)};
    bill.total_weight = WeightOf(TextOf(context.TotalWeightText));
    bill.billed_weight = WeightOf(TextOf(context.BilledWeightText));
    bill.gross = TextOf(context.GrossChargeText);
    bill.discount_percent = Unpadded(TextOf(context.DiscountPctText));
    bill.discount_amount = Unpadded(TextOf(context.DiscountAmountText));
    bill.surcharge = TextOf(context.SurchargeText);
    bill.minimum = Unpadded(TextOf(context.MinChargeText));
    bill.net = Unpadded(TextOf(context.NetChargeText));
    return bill;
}

std::string PointText(const BillPoint& point) {
    std::string text =
        fmt::format("{:<6} {}{}{}", point.zip, point.city,
                    point.city.empty() || point.state.empty() ? "" : ", ", point.state);
    if (!point.terminal.empty()) {
        text += fmt::format(", terminal {}, service {}", point.terminal, point.service);
    }
    return text;
}

std::string LineText(const std::string& name, int weight, const std::string& rate,
                     const std::string& charge) {
    return fmt::format("  {:<10}{:>9}{:>12}{:>14}\n", name, weight, rate, charge);
}

std::string AmountText(const std::string& name, const std::string& amount) {
    return fmt::format("  {:<30}{:>15}\n", name, amount);
}

std::string BreakListText(const BreakList& list, const char* title) {
    if (list.Count == 0) return {};
    std::string text = fmt::format("\n  {}\n", title);
    for (int32_t j = 0; j < list.Count; ++j) {
        const int32_t amount = list.Amounts[j];
        text += fmt::format("  {:<14}{:>10}{}\n", TextOf(list.Labels[j]), amount,
                            list.Marks[j][0] == '*' ? " *" : "");
    }
    return text;
}

Json BreakListJson(const BreakList& list) {
    Json entries = Json::array();
    for (int32_t j = 0; j < list.Count; ++j) {
        const int32_t weight = list.Weights[j];
        const int32_t amount = list.Amounts[j];
        entries.push_back(
            {{"weight", weight}, {"amount", amount}, {"raised_to_floor", list.Marks[j][0] == '*'}});
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

std::string BillText(const RateContext& context) {
    const Bill bill = ReadBill(context);
    std::string text = fmt::format(
        "FREIGHT BILL        tariff {} of {}, rate code {}\n\n"
        "  From  {}\n"
        "  To    {}\n\n"
        "  {:<10}{:>9}{:>12}{:>14}\n",
        bill.tariff, bill.date, bill.rate_code, PointText(bill.origin), PointText(bill.destination),
        "Class", "Pounds", "Rate/cwt", "Charge");
    for (const BillLine& line : bill.lines) {
        text += LineText(line.class_code, line.weight, line.rate, line.charge);
    }
    if (bill.deficit.weight != 0) {
        text += LineText("deficit", bill.deficit.weight, bill.deficit.rate, bill.deficit.charge);
    }
    text += LineText("total", bill.total_weight, "", "");
    if (bill.billed_weight != bill.total_weight) {
        text += LineText("billed as", bill.billed_weight, "", "");
    }
    text += '\n';
    text += AmountText("Gross charge", bill.gross);
    text += AmountText(fmt::format("Discount {}%", bill.discount_percent), bill.discount_amount);
    text += AmountText("Net charge", bill.net);
    text += AmountText("Minimum charge", bill.minimum);
    text += AmountText("Surcharge", bill.surcharge);
    text += BreakListText(context.BreakLists[0], "Minimum charges by weight break");
    text += BreakListText(context.BreakLists[1], "Single-shipment charges by weight break");
    return text;
}

Json BillJson(const RateContext& context) {
    const Bill bill = ReadBill(context);
    Json lines = Json::array();
    for (const BillLine& line : bill.lines) {
        lines.push_back({{"class", line.class_code},
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
            {"minimum_charges_by_break", BreakListJson(context.BreakLists[0])},
            {"single_shipment_charges_by_break", BreakListJson(context.BreakLists[1])}};
}

}  // namespace cwt
