#include <fmt/format.h>

#include <algorithm>

#include "bill/money.h"
#include "comparison/comparison_forms.h"
#include "text/code_page.h"

namespace cwt {
namespace {

constexpr std::size_t kTerminalColumns = 80;

/// How many characters a text of UTF-8 has.
std::size_t Length(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string Blanks(std::size_t width, const std::string& text) {
    return std::string(width - std::min(width, Length(text)), ' ');
}

std::string TableText(const FigureTable& table) {
    if (table.rows.empty()) return {};
    std::vector<std::size_t> widths;
    for (const std::string& head : table.heads) widths.push_back(Length(head));
    for (const auto& row : table.rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Length(row[i]));
    }
    const auto line = [&](const std::vector<std::string>& cells) {
        std::string text = "  " + cells[0] + Blanks(widths[0], cells[0]);
        for (std::size_t i = 1; i < cells.size(); ++i) {
            text += "  " + Blanks(widths[i], cells[i]) + cells[i];
        }
        return text.substr(0, text.find_last_not_of(' ') + 1) + '\n';
    };
    std::string text = "\n" + table.title + "\n";
    if (!table.note.empty()) text += "  " + table.note + "\n";
    text += line(table.heads);
    for (const auto& row : table.rows) text += line(row);
    return text;
}

/// A bar as long as the band's share of the longest.
std::string DistributionText(const Measure& measure) {
    const std::vector<Histogram::Band> bands = measure.histogram->Bands();
    if (bands.empty()) return {};
    const int64_t most = std::ranges::max(bands, {}, &Histogram::Band::count).count;
    std::size_t name_width = 0;
    for (const auto& band : bands) {
        name_width = std::max(name_width, Length(BandText(measure, band)));
    }
    const std::size_t count_width = Grouped(fmt::to_string(most)).size();
    const auto longest = static_cast<int64_t>(kTerminalColumns - 6 - name_width - count_width);
    std::string text = fmt::format("\n{}\n", measure.title);
    for (const auto& band : bands) {
        const std::string name = BandText(measure, band);
        const std::string count = Grouped(fmt::to_string(band.count));
        const int64_t length =
            band.count == 0 ? 0 : std::max<int64_t>(band.count * longest / most, 1);
        text += fmt::format("  {}{}  {}{}{}{}\n", Blanks(name_width, name), name,
                            Blanks(count_width, count), count, length == 0 ? "" : "  ",
                            std::string(static_cast<std::size_t>(length), '#'));
    }
    return text;
}

std::string SideText(const char* name, const ComparedSide& side) {
    std::string text = fmt::format("  {}  {}\n", name, Printable(side.file));
    for (const std::string& tariff : TariffTexts(side)) {
        text += fmt::format("       {}\n", Printable(tariff));
    }
    return text;
}

}  // namespace

std::string ComparisonText(const Comparison& comparison) {
    const auto count = [](int64_t number) { return Grouped(fmt::to_string(number)); };
    std::string text = fmt::format("COMPARISON          {} shipments, amounts in US dollars\n\n",
                                   count(comparison.rows)) +
                       SideText("OLD", comparison.of_old) + SideText("NEW", comparison.of_new);
    text += TableText(StatusTable(comparison));
    for (const auto& [side, name] :
         {std::pair{&comparison.of_old, "OLD"}, {&comparison.of_new, "NEW"}}) {
        if (side->rated_alone == 0) continue;
        text += fmt::format("  {} rated in {} only, total due {}\n", count(side->rated_alone), name,
                            Grouped(AmountOf(side->rated_alone_due)));
    }
    if (comparison.other_reason != 0) {
        text += fmt::format("  {} refused or failed in both for another reason\n",
                            count(comparison.other_reason));
    }
    if (comparison.total.count == 0) return text + "\nNo shipment is rated in both.\n";
    text += TableText(SumTable(comparison));
    text +=
        fmt::format("\n  Total due: {} rose, {} fell, {} stayed\n", count(comparison.total.rose),
                    count(comparison.total.fell),
                    count(comparison.total.count - comparison.total.rose - comparison.total.fell));
    text += fmt::format(
        "  {} with another discount percentage, {} in another weight break,\n"
        "  {} lines rated as another class\n",
        count(comparison.other_discount_percent), count(comparison.other_break),
        count(comparison.other_class));
    if (comparison.without_base != 0) {
        text += fmt::format("  {} without a per cent, since OLD has nothing due\n",
                            count(comparison.without_base));
    }
    text += TableText(OccurrenceTable(comparison));
    text += TableText(PercentileTable(comparison));
    for (const Measure& measure : Measures(comparison)) text += DistributionText(measure);
    for (const bool rising : {true, false}) text += TableText(LaneTable(comparison, rising));
    text += TableText(ClassTable(comparison));
    return text + TableText(BreakTable(comparison));
}

}  // namespace cwt
