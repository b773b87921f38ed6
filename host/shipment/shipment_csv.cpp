#include <fmt/core.h>

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "shipment/shipment_columns.h"
#include "shipment/shipment_json.h"
#include "shipment/shipment_reader.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/csv.h"

namespace cwt {
namespace {

using JsonValue = nlohmann::json;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kDigits = "0123456789";

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of(kDigits) == text.npos;
}

/// The digits of a number but for the zeros at both ends.
std::string DigitsOf(std::string_view number) {
    std::string digits;
    for (const char character : number.substr(0, number.find_first_of("eE"))) {
        if (kDigits.find(character) != kDigits.npos) digits += character;
    }
    digits.erase(0, digits.find_first_not_of('0'));
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

/// None of a text that is no number, or one of more digits than a number holds.
std::optional<double> NumberOf(std::string_view text) {
    constexpr std::size_t kAlwaysHeld = 15;  // Digits.
    if (text.find_first_not_of("0123456789.-+eE") != text.npos) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (text.size() > kAlwaysHeld && DigitsOf(text) != DigitsOf(fmt::format("{}", number))) {
        return std::nullopt;
    }
    return number;
}

/// A ZIP that became a number on the way has lost its leading zeros.
JsonValue PostalCodeValue(std::string_view cell) {
    const std::string_view digits = cell.ends_with(".0") ? cell.substr(0, cell.size() - 2) : cell;
    constexpr std::size_t kZipSize = 5;
    if (!IsDigits(digits) || digits.size() > kZipSize) return cell;
    return SpellZipNumber(std::stoi(std::string(digits)));
}

/// Numbers are read where they are wanted: "70.0" is the class 70, and "070" is none.
JsonValue CellValue(CellKind kind, std::string_view cell) {
    const std::optional<double> number = NumberOf(cell);
    switch (kind) {
        case CellKind::kPostalCode:
            return PostalCodeValue(cell);
        case CellKind::kClass:
            return number && cell.find('.') != cell.npos ? JsonValue(*number) : JsonValue(cell);
        case CellKind::kNumber:
            return number ? JsonValue(*number) : JsonValue(cell);
        case CellKind::kFlag: {
            const std::string word = UpperCase(cell);
            return word == "TRUE" || word == "FALSE" ? JsonValue(word == "TRUE") : JsonValue(cell);
        }
        case CellKind::kText:
            break;
    }
    return cell;
}

std::string FaultOf(std::string_view row) {
    if (row.size() > ShipmentReader::kLongestRow) return "a row of more than 1 MiB";
    if (row.find('\0') != row.npos) return "a zero byte";
    if (!IsUtf8(row)) return "this is not in UTF-8";
    return {};
}

class CsvReader : public ShipmentReader {
 public:
    CsvReader(std::string_view header_row, const std::vector<std::string>& allowed) {
        if (header_row.starts_with(kByteOrderMark)) header_row.remove_prefix(kByteOrderMark.size());
        std::string fault = Split(header_row);
        if (!fault.empty()) throw std::runtime_error("the header: " + fault);
        for (std::string& name : fields_) name = WithoutBlanksAround(name);
        header_ = MatchColumns(fields_, allowed);
    }

    Refusals Read(std::string_view row, Shipment& shipment,
                  std::vector<std::string>& passed) override {
        shipment = {};
        passed.assign(header_.passed.size(), "");
        if (std::string fault = Split(row); !fault.empty()) return {{"", fault}};
        Refusals refusals;
        ReadShipment(TakeFields(passed), shipment, refusals);
        return refusals;
    }

    const std::vector<std::string>& passed() const override { return header_.passed; }

    std::size_t RowEnd(std::string_view text, bool last) const override {
        return CsvRowEnd(text, last, kLongestRow);
    }

 private:
    /// Splits a row into as many fields as the header has, or says why it cannot.
    std::string Split(std::string_view row) {
        if (std::string fault = FaultOf(row); !fault.empty()) return fault;
        if (std::string fault = SplitCsvRow(row, fields_); !fault.empty()) return fault;
        const std::size_t wanted = header_.columns.size();
        if (wanted == 0 || fields_.size() == wanted) return {};
        return "the header has " + std::to_string(wanted) + " columns, the row " +
               std::to_string(fields_.size());
    }

    /// The shipment in its JSON form, and what nobody reads.
    JsonValue TakeFields(std::vector<std::string>& passed) {
        JsonValue shipment = {{"origin", JsonValue::object()},
                              {"destination", JsonValue::object()}};
        std::array<JsonValue, kMostLines> lines;
        auto next_passed = passed.begin();
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const ShipmentColumn* const column = header_.columns[i];
            if (column == nullptr) {
                *next_passed++ = std::move(fields_[i]);
                continue;
            }
            const std::string_view cell = WithoutBlanksAround(fields_[i]);
            if (cell.empty()) continue;
            JsonValue& object = column->line != kNoLine
                                    ? lines[static_cast<std::size_t>(column->line)]
                                : column->object.empty() ? shipment
                                                         : shipment[column->object];
            object[column->key] = CellValue(column->kind, cell);
        }
        for (JsonValue& line : lines) {
            if (!line.is_null()) shipment["lines"].push_back(std::move(line));
        }
        return shipment;
    }

    ShipmentHeader header_;
    std::vector<std::string> fields_;
};

}  // namespace

std::unique_ptr<ShipmentReader> MakeCsvReader(std::string_view header_row,
                                              const std::vector<std::string>& allowed) {
    return std::make_unique<CsvReader>(header_row, allowed);
}

}  // namespace cwt
