#include <fmt/core.h>

#include <algorithm>

#include "bill/bill.h"

namespace cwt {
namespace {

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

std::string WeightText(const std::string& name, int weight) {
    return fmt::format("  {:<10}{:>9}\n", name, weight);
}

bool IsMapped(const BillLine& line) {
    return line.rated_as != line.class_code;
}

std::string AmountText(const std::string& name, const std::string& amount) {
    return fmt::format("  {:<30}{:>15}\n", name, amount);
}

std::string ChargesText(const std::vector<BreakCharge>& charges, const char* title) {
    if (charges.empty()) return {};
    std::string text = fmt::format("\n  {}\n", title);
    for (const BreakCharge& charge : charges) {
        text += fmt::format("  {:<14}{:>10}{}\n", charge.label, charge.amount,
                            charge.raised_to_floor ? " *" : "");
    }
    return text;
}

/// What the bill's marks mean; nothing for one without marks.
std::string LegendText(const Bill& bill) {
    const bool mapped = std::ranges::any_of(bill.lines, IsMapped);
    const bool raised =
        std::ranges::any_of(bill.minimum_charges, &BreakCharge::raised_to_floor) ||
        std::ranges::any_of(bill.single_shipment_charges, &BreakCharge::raised_to_floor);
    std::string text = mapped || raised ? "\n" : "";
    if (mapped) text += "  * behind a class: the profile rates the entered class as this one\n";
    if (raised) text += "  * behind an amount: raised to the floor of the discount or the lane\n";
    return text;
}

}  // namespace

std::string BillText(const Bill& bill) {
    std::string text = fmt::format(
        "FREIGHT BILL        tariff {} of {}, rate code {}\n\n"
        "  From  {}\n"
        "  To    {}\n\n"
        "  {:<10}{:>9}{:>12}{:>14}\n",
        bill.tariff, bill.date, bill.rate_code, PointText(bill.origin), PointText(bill.destination),
        "Class", "Pounds", "Rate/cwt", "Charge");
    for (const BillLine& line : bill.lines) {
        const char* const mark = IsMapped(line) ? "*" : "";
        text += LineText(line.rated_as + mark, line.weight, line.rate, line.charge);
    }
    if (bill.deficit.weight != 0) {
        text += LineText("deficit", bill.deficit.weight, bill.deficit.rate, bill.deficit.charge);
    }
    text += WeightText("total", bill.total_weight);
    if (bill.billed_weight != bill.total_weight) {
        text += WeightText("billed as", bill.billed_weight);
    }
    text += '\n';
    text += AmountText("Gross charge", bill.gross);
    text += AmountText(fmt::format("Discount {}%", bill.discount_percent), bill.discount_amount);
    text += AmountText("Net charge", bill.net);
    text += AmountText("Minimum charge", bill.minimum);
    text += AmountText("Surcharge", bill.surcharge);
    text += AmountText("Total due", bill.total_due);
    text += ChargesText(bill.minimum_charges, "Minimum charges by weight break");
    text += ChargesText(bill.single_shipment_charges, "Single-shipment charges by weight break");
    text += LegendText(bill);
    return text;
}

}  // namespace cwt
