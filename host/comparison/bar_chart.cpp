#include "comparison/bar_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "text/code_page.h"

namespace cwt {
namespace {

// In units of a telephone's pixels.
constexpr double kWidth = 360, kRowHeight = 22, kBarHeight = 14, kTextBaseline = 15;
constexpr double kCharacter = 7, kGap = 8;

/// Room for the longest of some texts.
double RoomFor(const std::vector<Bar>& bars, std::string Bar::*text) {
    std::size_t longest = 0;
    for (const Bar& bar : bars) longest = std::max(longest, (bar.*text).size());
    return kCharacter * static_cast<double>(longest);
}

}  // namespace

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : Printable(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string BarChart(const std::string& id, const std::string& title,
                     const std::string& description, const std::vector<Bar>& bars) {
    int64_t lowest = 0, highest = 0;
    for (const Bar& bar : bars) {
        lowest = std::min(lowest, bar.value);
        highest = std::max(highest, bar.value);
    }
    const double names_end = RoomFor(bars, &Bar::name);
    const double bars_begin = names_end + kGap;
    const double bars_end = kWidth - RoomFor(bars, &Bar::text) - kGap;
    const double range = std::max(static_cast<double>(highest) - static_cast<double>(lowest), 1.0);
    const auto position = [&](int64_t value) {
        return bars_begin + (bars_end - bars_begin) *
                                (static_cast<double>(value) - static_cast<double>(lowest)) / range;
    };
    const double height = kRowHeight * static_cast<double>(bars.size());
    std::string svg = fmt::format(
        "<svg viewBox=\"0 0 {0} {1}\" role=\"img\" aria-labelledby=\"{2}-title {2}-text\">\n"
        "<title id=\"{2}-title\">{3}</title>\n<desc id=\"{2}-text\">{4}</desc>\n",
        kWidth, height, id, Escaped(title), Escaped(description));
    double top = 0;
    const double zero = position(0);
    for (const Bar& bar : bars) {
        const double end = position(bar.value);
        svg += fmt::format(
            "<text x=\"{}\" y=\"{}\" class=\"end\">{}</text>"
            "<rect x=\"{:.1f}\" y=\"{}\" width=\"{:.1f}\" height=\"{}\" class=\"{}\"/>"
            "<text x=\"{}\" y=\"{}\" class=\"end\">{}</text>\n",
            names_end, top + kTextBaseline, Escaped(bar.name), std::min(zero, end),
            top + (kRowHeight - kBarHeight) / 2, std::abs(end - zero), kBarHeight,
            bar.value < 0 ? "fell" : "rose", kWidth, top + kTextBaseline, Escaped(bar.text));
        top += kRowHeight;
    }
    return svg + fmt::format("<line x1=\"{0:.1f}\" y1=\"0\" x2=\"{0:.1f}\" y2=\"{1}\"/>\n</svg>\n",
                             zero, height);
}

}  // namespace cwt
