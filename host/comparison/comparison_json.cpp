#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "bill/money.h"
#include "comparison/comparison_forms.h"
#include "comparison/row_readers.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

Json SumJson(const Sum& sum) {
    const std::optional<int64_t> share = ShareOf(sum.change(), sum.of_old);
    return {{"old", AmountOf(sum.of_old)},
            {"new", AmountOf(sum.of_new)},
            {"change", AmountOf(sum.change())},
            {"percent_of_old", share ? Json(AmountOf(*share)) : Json(nullptr)}};
}

void AddGroup(Json& list, Json entry, const Group& group) {
    entry["count"] = group.count;
    entry["rose"] = group.rose;
    entry["fell"] = group.fell;
    entry.update(SumJson(group.sum));
    list.push_back(std::move(entry));
}

Json OccurrenceJson(const Occurrence& occurrence) {
    return {{"both", occurrence.both},
            {"old_only", occurrence.old_only},
            {"new_only", occurrence.new_only},
            {"neither", occurrence.neither}};
}

Json SideJson(const ComparedSide& side) {
    Json tariffs = Json::array();
    for (const auto& [tariff, rows] : side.tariffs) {
        tariffs.push_back({{"name", tariff.first}, {"date", tariff.second}, {"rows", rows}});
    }
    return {{"file", side.file},
            {"tariffs", tariffs},
            {"rated_here_only",
             {{"rows", side.rated_alone}, {"total_due", AmountOf(side.rated_alone_due)}}}};
}

Json StatusesJson(const Comparison& comparison) {
    Json statuses = Json::object();
    for (std::size_t i = 0; i < kStatuses; ++i) {
        for (std::size_t j = 0; j < kStatuses; ++j) {
            statuses[StatusWord(static_cast<RowStatus>(i))][StatusWord(static_cast<RowStatus>(j))] =
                comparison.statuses[i][j];
        }
    }
    return statuses;
}

Json DistributionJson(const Measure& measure) {
    const auto text = [&](int64_t value) {
        std::string shown = ValueText(measure, value);
        std::erase(shown, ',');
        return shown;
    };
    Json percentiles = Json::array(), bands = Json::array();
    if (measure.histogram->size() != 0) {
        for (const int percent : kPercentiles) {
            percentiles.push_back({{"percentile", percent},
                                   {"change", text(measure.histogram->Percentile(percent))}});
        }
    }
    for (const Histogram::Band& band : measure.histogram->Bands()) {
        bands.push_back({{"from", band.open_below ? Json(nullptr) : Json(text(band.from))},
                         {"to", band.open_above ? Json(nullptr) : Json(text(band.to))},
                         {"rows", band.count}});
    }
    return {{"rows", measure.histogram->size()},
            {"percentiles", std::move(percentiles)},
            {"bands", std::move(bands)}};
}

/// All lanes, by name.
Json LanesJson(const Comparison& comparison) {
    std::vector<NamedGroup> lanes;
    for (const auto& [name, group] : comparison.lanes) lanes.emplace_back(name, &group);
    std::ranges::sort(lanes);
    Json list = Json::array();
    for (const auto& [name, group] : lanes) AddGroup(list, {{"lane", name}}, *group);
    return list;
}

}  // namespace

Json ComparisonJson(const Comparison& comparison) {
    Json classes = Json::array(), breaks = Json::array();
    for (const auto& [name, group] : ClassGroups(comparison)) {
        AddGroup(classes, {{"rated_as", name}}, *group);
    }
    for (const auto& [lowest, group] : comparison.breaks) {
        AddGroup(breaks, {{"lowest_weight", lowest == 0 ? Json(nullptr) : Json(lowest)}}, group);
    }
    const std::vector<Measure> measures = Measures(comparison);
    const Group& total = comparison.total;
    return {{"schema", "hundredweight/comparison/1"},
            {"currency", "USD"},
            {"rows", comparison.rows},
            {"old", SideJson(comparison.of_old)},
            {"new", SideJson(comparison.of_new)},
            {"statuses", StatusesJson(comparison)},
            {"other_reason", comparison.other_reason},
            {"rated_in_both",
             {{"rows", total.count},
              {"rose", total.rose},
              {"fell", total.fell},
              {"stayed", total.count - total.rose - total.fell},
              {"other_discount_percent", comparison.other_discount_percent},
              {"other_weight_break", comparison.other_break},
              {"lines_rated_as_another_class", comparison.other_class},
              {"deficit_taken", OccurrenceJson(comparison.deficit_taken)},
              {"minimum_held", OccurrenceJson(comparison.minimum_held)},
              {"gross_charge", SumJson(comparison.gross)},
              {"deficit_charge", SumJson(comparison.deficit)},
              {"discount", SumJson(comparison.discount)},
              {"net_charge", SumJson(comparison.net)},
              {"surcharge", SumJson(comparison.surcharge)},
              {"total_due", SumJson(total.sum)},
              {"without_percent", comparison.without_base},
              {"changes_percent", DistributionJson(measures[0])},
              {"changes_dollars", DistributionJson(measures[1])},
              {"lanes", LanesJson(comparison)},
              {"classes", std::move(classes)},
              {"weight_breaks", std::move(breaks)}}}};
}

}  // namespace cwt
