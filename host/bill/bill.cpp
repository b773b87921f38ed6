#include "bill/bill.h"

#include <fmt/format.h>

#include <cstdlib>
#include <iterator>
#include <utility>

#include "bill/money.h"
#include "text/field_text.h"

namespace cwt {
namespace {

int WeightOf(const std::string& text) {
    return std::atoi(text.c_str());
}

/// An amount without the zeros that pad it.
std::string Unpadded(std::string amount) {
    while (amount.size() > 1 && amount[0] == '0' && amount[1] != '.') amount.erase(0, 1);
    return amount;
}

/// The library writes what rounds to nothing from below as -0.00.
std::string WithoutEmptyMinus(const std::string& amount) {
    return amount == "-0.00" ? "0.00" : amount;
}

/// The class that a line was rated at, when a profile has put it in the place of the entered one.
std::string RatedClass(const RateContext& context, std::size_t line) {
    if (context.LineClassMark[line][0] != '*') return TextOf(context.LineClass[line]);
    return TextOf(context.ClassTable[context.LineClassIndex[line]]);
}

std::optional<int> DaysOf(const std::string& text) {
    if (text.empty() || text.find_first_not_of("0123456789") != text.npos) return std::nullopt;
    return std::atoi(text.c_str());
}

std::vector<BreakCharge> ReadCharges(const BreakList& list) {
    std::vector<BreakCharge> charges;
    charges.reserve(std::size(list.Labels));
    for (int32_t j = 0; j < list.Count; ++j) {
        charges.push_back(
            {TextOf(list.Labels[j]), list.Weights[j], list.Amounts[j], list.Marks[j][0] == '*'});
    }
    return charges;
}

}  // namespace

Bill ReadBill(const RateContext& context, std::vector<std::string> notes) {
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
        bill.lines.push_back({TextOf(context.LineClass[i]), RatedClass(context, i), weight,
                              TextOf(context.LineRateText[i]), TextOf(context.LineChargeText[i])});
    }
    bill.deficit = {"", "", WeightOf(TextOf(context.ExtraWeightText)),
                    TextOf(context.ExtraRateText), TextOf(context.ExtraChargeText)};
    bill.total_weight = WeightOf(TextOf(context.TotalWeightText));
    bill.billed_weight = WeightOf(TextOf(context.BilledWeightText));
    bill.gross = TextOf(context.GrossChargeText);
    bill.discount_percent = Unpadded(TextOf(context.DiscountPctText));
    bill.discount_amount = Unpadded(TextOf(context.DiscountAmountText));
    bill.surcharge = WithoutEmptyMinus(TextOf(context.SurchargeText));
    bill.minimum = Unpadded(TextOf(context.MinChargeText));
    bill.net = Unpadded(TextOf(context.NetChargeText));
    const Cents due = CentsOf(bill.net) + CentsOf(bill.surcharge);
    bill.total_due = AmountOf(due);
    if (context.UseServiceGuide != 0) {
        bill.transit_days = {DaysOf(TextOf(context.SgValueA)), DaysOf(TextOf(context.SgValueB)),
                             DaysOf(TextOf(context.SgValueC))};
    }
    bill.minimum_charges = ReadCharges(context.BreakLists[0]);
    bill.single_shipment_charges = ReadCharges(context.BreakLists[1]);
    bill.notes = std::move(notes);
    return bill;
}

Refusals CheckAmounts(const Bill& bill) {
    Refusals refusals;
    const auto check = [&](const std::string& place, const std::string& amount) {
        if (!ParseCents(amount))
            refusals.push_back({place, "no amount in dollars and cents", 0, amount});
    };
    int weight = 0;
    for (std::size_t i = 0; i < bill.lines.size(); ++i) {
        check(fmt::format("lines[{}].rate", i), bill.lines[i].rate);
        check(fmt::format("lines[{}].charge", i), bill.lines[i].charge);
        weight += bill.lines[i].weight;
    }
    check("deficit.rate", bill.deficit.rate);
    check("deficit.charge", bill.deficit.charge);
    check("gross_charge", bill.gross);
    check("discount_percent", bill.discount_percent);
    check("discount_amount", bill.discount_amount);
    check("net_charge", bill.net);
    check("minimum_charge", bill.minimum);
    check("surcharge", bill.surcharge);
    const auto check_weight = [&](const char* place, bool holds, int written) {
        if (holds) return;
        refusals.push_back({place, "not the weight of the lines", 0, fmt::to_string(written)});
    };
    check_weight("total_weight", bill.total_weight == weight, bill.total_weight);
    check_weight("billed_weight", bill.billed_weight >= weight, bill.billed_weight);
    return refusals;
}

Cents SumOfLines(const Bill& bill) {
    Cents cents = CentsOf(bill.deficit.charge);
    for (const BillLine& line : bill.lines) cents += CentsOf(line.charge);
    return cents;
}

std::string GrossNote(const Bill& bill) {
    const Cents cents = SumOfLines(bill);
    if (cents == CentsOf(bill.gross)) return {};
    return fmt::format("gross_charge: {} is rounded, the lines add up to {}", bill.gross,
                       AmountOf(cents));
}

}  // namespace cwt
