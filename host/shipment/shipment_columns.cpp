#include "shipment/shipment_columns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>

#include "shipment/shipment.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

std::vector<ShipmentColumn> MakeColumns() {
    using enum CellKind;
    std::vector<ShipmentColumn> columns = {
        {"id", "", kNoLine, "id", kText},
        {"description", "", kNoLine, "description", kText},
        {"origin_zip", "origin", kNoLine, "zip", kPostalCode},
        {"origin_city", "origin", kNoLine, "city", kText},
        {"origin_state", "origin", kNoLine, "state", kText},
        {"origin_territory", "origin", kNoLine, "territory", kText},
        {"origin_intrastate", "origin", kNoLine, "intrastate", kFlag},
        {"destination_zip", "destination", kNoLine, "zip", kPostalCode},
        {"destination_city", "destination", kNoLine, "city", kText},
        {"destination_state", "destination", kNoLine, "state", kText},
        {"destination_territory", "destination", kNoLine, "territory", kText},
        {"tariff", "", kNoLine, "tariff", kText},
        {"profile", "", kNoLine, "profile", kText},
        {"factor", "", kNoLine, "factor", kNumber},
        {"discount_percent", "discount", kNoLine, "percent", kNumber},
        {"discount_flat_percent", "discount", kNoLine, "flat_percent", kNumber},
        {"discount_floor", "discount", kNoLine, "floor", kNumber},
        {"surcharge_low_percent", "surcharge", kNoLine, "low_percent", kNumber},
        {"surcharge_high_percent", "surcharge", kNoLine, "high_percent", kNumber},
        {"surcharge_break_index", "surcharge", kNoLine, "break_index", kNumber},
        {"service_guide", "", kNoLine, "service_guide", kFlag}};
    for (int line = 0; line < static_cast<int>(kMostLines); ++line) {
        columns.push_back({fmt::format("class_{}", line + 1), "", line, "class", kClass});
        columns.push_back({fmt::format("weight_{}", line + 1), "", line, "weight", kNumber});
    }
    return columns;
}

const std::vector<ShipmentColumn>& Columns() {
    static const std::vector<ShipmentColumn> columns = MakeColumns();
    return columns;
}

/// Words that people shorten in the names of columns.
constexpr std::string_view kShortened[][2] = {
    {"orig", "origin"}, {"dest", "destination"}, {"wt", "weight"}, {"wgt", "weight"},
    {"pct", "percent"}, {"perc", "percent"},     {"%", "percent"}, {"percentage", "percent"}};

/// A name's letters and digits alone, in small letters, with its words in full.
std::string Plain(std::string_view name) {
    std::string plain;
    for (std::size_t end = 0; end < name.size();) {
        const auto in_word = [&](std::size_t i) {
            return i < name.size() && std::isalnum(static_cast<unsigned char>(name[i])) != 0;
        };
        std::string word;
        while (in_word(end)) {
            word += static_cast<char>(std::tolower(static_cast<unsigned char>(name[end++])));
        }
        if (word.empty()) word = name[end++];
        const auto* const found =
            std::ranges::find(kShortened, word, [](const auto& pair) { return pair[0]; });
        if (found != std::end(kShortened)) word = (*found)[1];
        if (std::isalnum(static_cast<unsigned char>(word[0])) != 0) plain += word;
    }
    return plain;
}

/// A plain name's words, and the number behind them without zeros in front.
struct NumberedName {
    explicit NumberedName(std::string_view plain)
        : words(plain.substr(0, plain.find_last_not_of("0123456789") + 1)), number(plain) {
        number.remove_prefix(words.size());
        while (number.size() > 1 && number.front() == '0') number.remove_prefix(1);
    }
    std::string_view words, number;
};

/// Whether who wrote some words most likely meant known ones: the same, or a slip of the pen.
bool IsNearly(const NumberedName& written, const NumberedName& known) {
    constexpr std::size_t kShortest = 5;  // Characters; slips make other words of shorter ones.
    return written.words == known.words ||
           (known.words.size() >= kShortest && IsOneSlipApart(written.words, known.words));
}

/// Whether a name is half of one that changes charges: "discount", "floor", "surcharge".
bool IsHalf(const std::string& written, const ShipmentColumn& column) {
    const bool is_of_terms = column.object == "discount" || column.object == "surcharge";
    return is_of_terms && (written == Plain(column.object) || written == Plain(column.key));
}

const ShipmentColumn* Find(std::string_view name) {
    const auto found = std::ranges::find(Columns(), name, &ShipmentColumn::name);
    return found == Columns().end() ? nullptr : &*found;
}

void RequireNotNearlyKnown(const std::string& name) {
    const std::string plain = Plain(name);
    const NumberedName written(plain);
    for (const ShipmentColumn& column : Columns()) {
        const std::string plain_known = Plain(column.name);
        const NumberedName known(plain_known);
        const bool is_near = IsNearly(written, known);
        if ((is_near && written.number == known.number) || IsHalf(plain, column)) {
            throw std::runtime_error(
                fmt::format("the column \"{}\" would not be read; \"{}\" is most likely meant",
                            Printable(name), column.name));
        }
        const bool is_last_line = column.line + 1 == static_cast<int>(kMostLines);
        if (is_near && is_last_line && !written.number.empty()) {
            throw std::runtime_error(fmt::format(
                "the column \"{}\" would not be read; a shipment has lines 1 to {}, the last is "
                "\"{}\"",
                Printable(name), kMostLines, column.name));
        }
    }
}

void RequireWanted(const std::vector<std::string>& names) {
    std::vector<std::string> missing;
    for (const char* const wanted : {"origin_zip", "destination_zip", "class_1", "weight_1"}) {
        if (std::ranges::find(names, wanted) == names.end()) missing.emplace_back(wanted);
    }
    if (missing.empty()) return;
    const auto parted_by = [&](char character) {
        return std::ranges::any_of(
            names, [&](const std::string& name) { return name.find(character) != name.npos; });
    };
    if (parted_by(';'))
        throw std::runtime_error("the columns are parted by semicolons; commas are wanted");
    if (parted_by('\t'))
        throw std::runtime_error("the columns are parted by tabs; commas are wanted");
    throw std::runtime_error(
        fmt::format("the header lacks what every shipment has: {}", fmt::join(missing, ", ")));
}

}  // namespace

ShipmentHeader MatchColumns(const std::vector<std::string>& names,
                            const std::vector<std::string>& allowed) {
    ShipmentHeader header;
    for (auto name = names.begin(); name != names.end(); ++name) {
        if (std::find(names.begin(), name, *name) != name) {
            throw std::runtime_error(
                fmt::format("the column \"{}\" is there twice", Printable(*name)));
        }
        const ShipmentColumn* const column = Find(*name);
        header.columns.push_back(column);
        if (column != nullptr) continue;
        if (std::ranges::find(allowed, *name) == allowed.end()) RequireNotNearlyKnown(*name);
        header.passed.push_back(*name);
    }
    RequireWanted(names);
    return header;
}

}  // namespace cwt
