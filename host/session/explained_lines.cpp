#include <fmt/core.h>

#include <iterator>

#include "bill/money.h"
#include "session/explained.h"
#include "text/field_text.h"

namespace cwt {
namespace {

/// Cites the profile's entry that maps a line's class, if it is found to.
void CiteClassMap(const RatedShipment& rated, const BillLine& line, Statement& statement) {
    const RateContext& context = rated.context;
    for (std::size_t i = 0; i < std::size(context.Profile.ClassMap); ++i) {
        if (TextOf(context.ClassTable[i]) != line.class_code) continue;
        if (TextOf(context.Profile.ClassMap[i]) != line.rated_as) continue;
        statement.sources.push_back(rated.Profile(fmt::format("ClassMap[{}]", i)));
        return;
    }
}

void ExplainLine(const RatedShipment& rated, std::size_t i, Explanation& explanation) {
    const BillLine& line = rated.bill.lines[i];
    Statement statement = {.topic = "line",
                           .figures = {{"line", static_cast<int>(i) + 1},
                                       {"class", line.class_code},
                                       {"rated_as", line.rated_as},
                                       {"weight", line.weight},
                                       {"rate", line.rate},
                                       {"charge", line.charge}}};
    const std::string place = fmt::format("lines[{}]", i);
    statement.sources = {{.shipment = place + ".class"}, {.shipment = place + ".weight"}};
    std::string class_words = "Class " + line.class_code;
    if (line.rated_as != line.class_code) {
        class_words += fmt::format(", which the profile rates as {}", line.rated_as);
        CiteClassMap(rated, line, statement);
    }
    if (rated.engine.RatesAllKinds()) {
        class_words += " (the tariff has one rate for freight of all kinds)";
    }
    statement.adds_up = ChargeOf(line.weight, CentsOf(line.rate)) == CentsOf(line.charge);
    if (*statement.adds_up) {
        statement.words = fmt::format("{}: {} x {} / 100 = {}.", class_words, line.weight,
                                      line.rate, line.charge);
    } else {
        statement.words = fmt::format("{}: {} pounds at {}. The engine's own charge stands: {}.",
                                      class_words, line.weight, line.rate, line.charge);
    }
    if (const auto lowest = rated.engine.BreakOf(rated.bill.billed_weight)) {
        const int weight_break = rated.engine.breaks[*lowest].weight;
        statement.figures.push_back({"weight_break", weight_break});
        statement.words +=
            fmt::format(" The billed weight, {}, lies in the engine's weight break {}#>.",
                        rated.bill.billed_weight, weight_break);
    }
    statement.sources.push_back({.field = fmt::format("LineRateText[{}]", i)});
    statement.sources.push_back({.field = fmt::format("LineChargeText[{}]", i)});
    explanation.push_back(statement);
}

void ExplainGross(const Bill& bill, Explanation& explanation) {
    Statement statement = {.topic = "gross", .figures = {{"gross_charge", bill.gross}}};
    std::string terms;
    for (const BillLine& line : bill.lines) terms += line.charge + " + ";
    if (bill.deficit.weight != 0) {
        terms += bill.deficit.charge + " + ";
        statement.sources.push_back({.field = "ExtraChargeText"});
    }
    terms.resize(terms.size() - 3);
    const Cents sum = SumOfLines(bill);
    statement.adds_up = sum == CentsOf(bill.gross);
    if (*statement.adds_up) {
        statement.words = terms == bill.gross
                              ? fmt::format("The charge of the one line, {}.", terms)
                              : fmt::format("{} = {}.", terms, bill.gross);
    } else {
        statement.words = fmt::format(
            "The library's own sum stands: {}. It is rounded to single precision; the lines add up "
            "to {}, which the engine's discount and net charge are held against.",
            bill.gross, AmountOf(sum));
    }
    statement.sources.push_back({.field = "GrossChargeText"});
    explanation.push_back(statement);
}

}  // namespace

void ExplainLines(const RatedShipment& rated, Explanation& explanation) {
    for (std::size_t i = 0; i < rated.bill.lines.size(); ++i) ExplainLine(rated, i, explanation);
    ExplainDeficit(rated, explanation);
    ExplainGross(rated.bill, explanation);
}

}  // namespace cwt
