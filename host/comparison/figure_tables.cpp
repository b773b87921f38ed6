#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "bill/money.h"
#include "comparison/comparison_forms.h"
#include "comparison/row_readers.h"

namespace cwt {
namespace {

std::string CountText(int64_t count) {
    return Grouped(fmt::to_string(count));
}

std::string MoneyText(int64_t cents) {
    return Grouped(AmountOf(cents));
}

std::string Signed(const std::string& number) {
    const bool is_zero = number.find_first_not_of("0.") == number.npos;
    return is_zero || number.starts_with('-') ? number : "+" + number;
}

std::string PercentText(int64_t change, int64_t base) {
    const std::optional<int64_t> share = ShareOf(change, base);
    return share ? Signed(AmountOf(*share)) : "-";
}

std::vector<std::string> SumRow(std::string name, const Sum& sum) {
    return {std::move(name), MoneyText(sum.of_old), MoneyText(sum.of_new),
            Signed(MoneyText(sum.change())), PercentText(sum.change(), sum.of_old)};
}

std::vector<std::string> OccurrenceRow(const char* name, const Occurrence& occurrence) {
    return {name, CountText(occurrence.both), CountText(occurrence.old_only),
            CountText(occurrence.new_only), CountText(occurrence.neither)};
}

/// The number that a class is; above all of them for FAK and such.
double ClassNumber(const std::string& name) {
    constexpr double kBehindAll = 1e9;
    char* end = nullptr;
    const double number = std::strtod(name.c_str(), &end);
    return end == name.c_str() ? kBehindAll : number;
}

}  // namespace

std::vector<NamedGroup> TopLanes(const Comparison& comparison, bool rising, std::size_t most) {
    std::vector<NamedGroup> lanes;
    for (const auto& [name, group] : comparison.lanes) {
        const int64_t change = group.sum.change();
        if (rising ? change > 0 : change < 0) lanes.emplace_back(name, &group);
    }
    const auto before = [](const NamedGroup& a, const NamedGroup& b) {
        const int64_t of_a = std::abs(a.second->sum.change());
        const int64_t of_b = std::abs(b.second->sum.change());
        return of_a != of_b ? of_a > of_b : a.first < b.first;
    };
    const std::size_t size = std::min(most, lanes.size());
    std::partial_sort(lanes.begin(), lanes.begin() + static_cast<std::ptrdiff_t>(size), lanes.end(),
                      before);
    lanes.resize(size);
    return lanes;
}

std::vector<NamedGroup> ClassGroups(const Comparison& comparison) {
    std::vector<NamedGroup> groups;
    for (const auto& [name, group] : comparison.classes) groups.emplace_back(name, &group);
    std::ranges::stable_sort(groups, {},
                             [](const NamedGroup& each) { return ClassNumber(each.first); });
    return groups;
}

std::vector<NamedGroup> BreakGroups(const Comparison& comparison) {
    std::vector<NamedGroup> groups;
    for (const auto& [lowest, group] : comparison.breaks) {
        groups.emplace_back(lowest == 0 ? "not told" : CountText(lowest) + " and more", &group);
    }
    return groups;
}

FigureTable StatusTable(const Comparison& comparison) {
    FigureTable table = {"Shipments",
                         "What a shipment was in OLD, and what it is in NEW.",
                         {"In OLD", "rated in NEW", "refused in NEW", "failed in NEW"},
                         {}};
    for (std::size_t i = 0; i < kStatuses; ++i) {
        table.rows.push_back({StatusWord(static_cast<RowStatus>(i))});
        for (const int64_t count : comparison.statuses[i]) {
            table.rows.back().push_back(CountText(count));
        }
    }
    return table;
}

FigureTable SumTable(const Comparison& comparison) {
    return {"Sums",
            "Of the shipments that are rated in both. Dollars; per cent of the OLD sum.",
            {"", "OLD", "NEW", "Change", "Per cent"},
            {SumRow("Gross charge", comparison.gross), SumRow(" of it deficit", comparison.deficit),
             SumRow("Discount", comparison.discount), SumRow("Net charge", comparison.net),
             SumRow("Surcharge", comparison.surcharge), SumRow("Total due", comparison.total.sum)}};
}

FigureTable OccurrenceTable(const Comparison& comparison) {
    return {"Deficits and minimums",
            "On how many of these shipments the deficit was taken, and the minimum held.",
            {"", "in both", "in OLD only", "in NEW only", "in neither"},
            {OccurrenceRow("Deficit taken", comparison.deficit_taken),
             OccurrenceRow("Minimum held", comparison.minimum_held)}};
}

FigureTable PercentileTable(const Comparison& comparison) {
    FigureTable table = {
        "Percentiles of the change",
        "So many per cent of the shipments changed by that or less; 50 is the median.",
        {"Percentile"},
        {}};
    const std::vector<Measure> measures = Measures(comparison);
    for (const Measure& measure : measures) table.heads.emplace_back(measure.unit);
    for (const int percent : kPercentiles) {
        table.rows.push_back({fmt::to_string(percent)});
        for (const Measure& measure : measures) {
            table.rows.back().push_back(
                measure.histogram->size() == 0
                    ? "-"
                    : Signed(ValueText(measure, measure.histogram->Percentile(percent))));
        }
    }
    return table;
}

FigureTable GroupTable(std::string title, std::string note, const char* head, const char* counted,
                       const std::vector<NamedGroup>& groups) {
    FigureTable table = {
        std::move(title), std::move(note), {head, counted, "OLD", "NEW", "Change", "Per cent"}, {}};
    for (const auto& [name, group] : groups) {
        std::vector<std::string> row = SumRow(name, group->sum);
        row.insert(row.begin() + 1, CountText(group->count));
        table.rows.push_back(std::move(row));
    }
    return table;
}

FigureTable ClassTable(const Comparison& comparison) {
    FigureTable table =
        GroupTable("Classes", "Charges of lines, before discount, by the class rated as in OLD.",
                   "Class", "Lines", ClassGroups(comparison));
    std::vector<std::string> deficit = SumRow("deficit", comparison.deficit);
    deficit.insert(deficit.begin() + 1, "");
    table.rows.push_back(std::move(deficit));
    return table;
}

FigureTable BreakTable(const Comparison& comparison) {
    return GroupTable("Weight breaks",
                      "Total due by the break of the billed weight in OLD, from its lowest weight.",
                      "Pounds", "Rows", BreakGroups(comparison));
}

FigureTable LaneTable(const Comparison& comparison, bool rising) {
    return GroupTable(rising ? "Lanes that rose most" : "Lanes that fell most",
                      "Total due by the first three characters of the postal codes.", "Lane",
                      "Rows", TopLanes(comparison, rising, kTopLanes));
}

std::vector<std::string> TariffTexts(const ComparedSide& side) {
    constexpr std::size_t kMost = 5;
    std::vector<std::pair<int64_t, std::string>> tariffs;
    for (const auto& [tariff, rows] : side.tariffs) {
        tariffs.emplace_back(-rows, tariff.first + " of " + tariff.second);
    }
    std::ranges::sort(tariffs);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < std::min(kMost, tariffs.size()); ++i) {
        texts.push_back(
            fmt::format("{} ({} rows)", tariffs[i].second, CountText(-tariffs[i].first)));
    }
    if (tariffs.size() > kMost) {
        texts.push_back(fmt::format("{} other tariffs", tariffs.size() - kMost));
    }
    if (texts.empty()) texts.emplace_back("nothing rated");
    return texts;
}

std::vector<Measure> Measures(const Comparison& comparison) {
    return {{"Changes in per cent of the OLD total due", "per cent", 1, &comparison.percent},
            {"Changes in dollars of total due", "dollars", 2, &comparison.cents}};
}

std::string ValueText(const Measure& measure, int64_t value) {
    constexpr int64_t kTen = 10;
    if (measure.decimals == 2) return MoneyText(value);
    return Grouped(fmt::format("{}{}.{}", value < 0 ? "-" : "", std::abs(value) / kTen,
                               std::abs(value) % kTen));
}

std::string BandText(const Measure& measure, const Histogram::Band& band) {
    constexpr int64_t kDollar = 100;
    const bool whole = measure.decimals == 2 && band.from % kDollar == 0 && band.to % kDollar == 0;
    const auto text = [&](int64_t value) {
        return whole ? CountText(value / kDollar) : ValueText(measure, value);
    };
    if (band.open_below) return "below " + text(band.to);
    if (band.open_above) return text(band.from) + " and more";
    if (band.to - band.from == 1) return text(band.from);
    return text(band.from) + " to " + text(band.to);
}

}  // namespace cwt
