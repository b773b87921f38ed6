#include <fmt/format.h>

#include <algorithm>

#include "bill/money.h"
#include "comparison/bar_chart.h"
#include "comparison/comparison_forms.h"

namespace cwt {
namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>Comparison of freight bills</title>
<style>
:root { --paper: #fff; --ink: #1d2433; --quiet: #4d566b; --rule: #c9cfdb; --rose: #b3471d;
  --fell: #1f6f8b; --bars: #3f5f9e; }
@media (prefers-color-scheme: dark) { :root { --paper: #14181f; --ink: #e8ebf1; --quiet: #aab3c5;
  --rule: #3b4456; --rose: #f0905f; --fell: #5fc0de; --bars: #8fb0f2; } }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 75rem; background: var(--paper);
  color: var(--ink); font: 1rem/1.45 system-ui, sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .5rem; }
h2 { font-size: 1.15rem; margin: 0 0 .25rem; }
p { margin: 0 0 .5rem; }
.note, dt { color: var(--quiet); }
dl { display: grid; grid-template-columns: minmax(0, max-content) minmax(60%, 1fr);
  gap: .25rem 1rem; margin: 0 0 1.5rem; }
dd { margin: 0; overflow-wrap: anywhere; }
main { columns: 2 30rem; column-gap: 2rem; }
section { break-inside: avoid; margin-bottom: 2rem; }
svg { display: block; width: 100%; max-width: 34rem; margin: .5rem 0 1rem; }
svg text { font-size: 11px; fill: var(--ink); font-variant-numeric: tabular-nums; }
svg .end { text-anchor: end; }
svg line { stroke: var(--quiet); }
.rose { fill: var(--rose); }
.fell { fill: var(--fell); }
.counts .rose { fill: var(--bars); }
.table { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; font-size: .875rem;
  font-variant-numeric: tabular-nums; }
th, td { padding: .2rem .4rem; border-bottom: 1px solid var(--rule); text-align: right;
  white-space: nowrap; font-weight: normal; }
thead th { white-space: normal; color: var(--quiet); vertical-align: bottom; }
th:first-child { text-align: left; }
caption { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
@media screen and (max-width: 36rem) {
  dl { display: block; }
  dd { margin: 0 0 .5rem; }
  .wide, .wide tbody, .wide tr, .wide th { display: block; }
  .wide thead { position: absolute; width: 1px; height: 1px; overflow: hidden;
    clip-path: inset(50%); }
  .wide th { border: 0; font-weight: bold; padding-left: 0; }
  .wide tr { border-bottom: 1px solid var(--rule); padding-bottom: .3rem; }
  .wide td { display: flex; justify-content: space-between; border: 0; padding: 0 0 0 1rem; }
  .wide td::before { content: attr(data-head); color: var(--quiet); }
  .wide td:empty { display: none; }
}
@media print {
  :root { --paper: #fff; --ink: #000; --quiet: #333; --rule: #999; --rose: #b3471d;
    --fell: #1f6f8b; --bars: #3f5f9e; color-scheme: light; }
  body { padding: 0; max-width: none; font-size: 10pt; }
  main { columns: auto; }
  section { break-inside: auto; margin-bottom: 1.5rem; }
  svg { max-width: 26rem; }
  svg, tr, h2, .note { break-inside: avoid; }
  h2, .note { break-after: avoid; }
  .rose, .fell { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  .table { overflow: visible; }
}
</style>
</head>
<body>
)";

/// The roles tell screen readers that it is a table where a narrow screen shows it as a list.
std::string TableHtml(const FigureTable& table) {
    constexpr std::size_t kMostColumns = 4;  // That fit a telephone's width.
    std::string html = fmt::format(
        "<div class=\"table\" role=\"region\" tabindex=\"0\" aria-label=\"{0}, table\">"
        "<table role=\"table\"{1}>\n<caption>{0}</caption>\n"
        "<thead role=\"rowgroup\"><tr role=\"row\">",
        Escaped(table.title), table.heads.size() > kMostColumns ? " class=\"wide\"" : "");
    for (const std::string& head : table.heads) {
        html += head.empty()
                    ? "<td role=\"cell\"></td>"
                    : fmt::format("<th role=\"columnheader\" scope=\"col\">{}</th>", Escaped(head));
    }
    html += "</tr></thead>\n<tbody role=\"rowgroup\">\n";
    for (const auto& row : table.rows) {
        html += fmt::format("<tr role=\"row\"><th role=\"rowheader\" scope=\"row\">{}</th>",
                            Escaped(row[0]));
        for (std::size_t i = 1; i < row.size(); ++i) {
            html += fmt::format("<td role=\"cell\" data-head=\"{}\">{}</td>",
                                Escaped(table.heads[i]), Escaped(row[i]));
        }
        html += "</tr>\n";
    }
    return html + "</tbody>\n</table></div>\n";
}

/// A table with a plot above it, where there is one.
std::string SectionHtml(const FigureTable& table, const std::string& plot = {},
                        const char* kind = "changes") {
    return fmt::format(
        "<section class=\"{}\">\n<h2>{}</h2>\n<p class=\"note\">{}</p>\n{}{}</section>\n", kind,
        Escaped(table.title), Escaped(table.note), plot, TableHtml(table));
}

std::string DistributionHtml(const Measure& measure, const char* id) {
    FigureTable table = {measure.title,
                         "How many shipments changed by how much; up to, but without, the second "
                         "figure.",
                         {std::string("Change, ") + measure.unit, "Shipments"},
                         {}};
    std::vector<Bar> bars;
    for (const Histogram::Band& band : measure.histogram->Bands()) {
        const std::string count = Grouped(fmt::to_string(band.count));
        bars.push_back({BandText(measure, band), band.count, count});
        table.rows.push_back({BandText(measure, band), count});
    }
    if (bars.empty()) return {};
    return SectionHtml(table,
                       BarChart(id, measure.title, "Shipments by band; the table has them.", bars),
                       "counts");
}

/// A plot of what the groups of a table changed by.
std::string GroupsHtml(const FigureTable& table, const char* id,
                       const std::vector<NamedGroup>& groups) {
    if (groups.empty()) return {};
    std::vector<Bar> bars;
    for (const auto& [name, group] : groups) {
        const int64_t change = group->sum.change();
        bars.push_back({name, change, (change > 0 ? "+" : "") + Grouped(AmountOf(change))});
    }
    return SectionHtml(
        table, BarChart(id, table.title + ", changes in dollars",
                        "Rising bars go right, falling ones left; the table has them.", bars));
}

std::string SummaryHtml(const Comparison& comparison) {
    const auto count = [](int64_t number) { return Grouped(fmt::to_string(number)); };
    const Group& total = comparison.total;
    std::string html = fmt::format(
        "<header>\n<h1>Comparison of freight bills</h1>\n"
        "<p>{} shipments, amounts in US dollars. Of {} that are rated in both, the total due of {} "
        "rose, of {} fell and of {} stayed.</p>\n"
        "<dl>\n",
        count(comparison.rows), count(total.count), count(total.rose), count(total.fell),
        count(total.count - total.rose - total.fell));
    const auto fact = [&](const char* name, const std::string& text) {
        html += fmt::format("<dt>{}</dt><dd>{}</dd>\n", name, text);
    };
    for (const auto& [side, name] :
         {std::pair{&comparison.of_old, "OLD"}, {&comparison.of_new, "NEW"}}) {
        std::string text = Escaped(side->file);
        for (const std::string& tariff : TariffTexts(*side)) text += "<br>" + Escaped(tariff);
        fact(name, text);
    }
    for (const auto& [side, name] : {std::pair{&comparison.of_old, "Rated in OLD only"},
                                     {&comparison.of_new, "Rated in NEW only"}}) {
        if (side->rated_alone == 0) continue;
        fact(name, fmt::format("{}, total due {}", count(side->rated_alone),
                               Grouped(AmountOf(side->rated_alone_due))));
    }
    fact("Not rated in both, for another reason", count(comparison.other_reason));
    fact("Another discount percentage", count(comparison.other_discount_percent));
    fact("Another weight break", count(comparison.other_break));
    fact("Lines rated as another class", count(comparison.other_class));
    if (comparison.without_base != 0) {
        fact("Without a per cent, nothing being due in OLD", count(comparison.without_base));
    }
    return html + "</dl>\n</header>\n";
}

}  // namespace

std::string ComparisonPage(const Comparison& comparison) {
    const std::vector<Measure> measures = Measures(comparison);
    return kHead + SummaryHtml(comparison) + "<main>\n" + SectionHtml(SumTable(comparison)) +
           SectionHtml(StatusTable(comparison)) + DistributionHtml(measures[0], "per-cent") +
           DistributionHtml(measures[1], "dollars") + SectionHtml(PercentileTable(comparison)) +
           SectionHtml(OccurrenceTable(comparison)) +
           GroupsHtml(LaneTable(comparison, true), "lanes-up",
                      TopLanes(comparison, true, kTopLanes)) +
           GroupsHtml(LaneTable(comparison, false), "lanes-down",
                      TopLanes(comparison, false, kTopLanes)) +
           GroupsHtml(ClassTable(comparison), "classes", ClassGroups(comparison)) +
           GroupsHtml(BreakTable(comparison), "breaks", BreakGroups(comparison)) +
           "</main>\n</body>\n</html>\n";
}

}  // namespace cwt
