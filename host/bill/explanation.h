// Why a bill says what it says: statements in the words of a rate clerk, each with its figures and
// where they come from.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bill/bill.h"

namespace cwt {

/// Where a statement comes from: a record of a file, a place in the shipment, or a field that the
/// rating has left in the library's record.
struct Source {
    std::string file = {};      ///< By its name in the data directory, or its path.
    int record = 0;             ///< Of the file, from 1.
    std::string field = {};     ///< "ZipDiscounts[0].Floor"; with a file, a part of its record.
    std::string shipment = {};  ///< "lines[0].class".
};

/// A figure of the bill or of its data. Money, rates and percentages are texts of two decimals,
/// weights whole pounds.
struct Figure {
    Figure(const char* its_name, std::string value) : name(its_name), text(std::move(value)) {}
    Figure(const char* its_name, int value)
        : name(its_name), text(std::to_string(value)), is_whole(true) {}

    const char* name;
    std::string text;
    bool is_whole = false;  ///< A whole number, in JSON too.
};

struct Statement {
    const char* topic;  ///< "origin", "line", "discount", ...
    std::string words = {};
    std::vector<Figure> figures = {};
    std::vector<Source> sources = {};
    /// Whether the bill's figure is what exact arithmetic makes of the others; nothing where
    /// nothing is reckoned.
    std::optional<bool> adds_up = {};
};

using Explanation = std::vector<Statement>;

/// The explanation for a reader, lines ending in LF.
std::string ExplanationText(const Explanation& explanation);

/// The bill and its explanation as JSON, of the schema hundredweight/explanation/1.
void WriteJson(JsonWriter& json, const Bill& bill, const Explanation& explanation);

/// The same as it is printed.
std::string ExplanationDocument(const Bill& bill, const Explanation& explanation);

}  // namespace cwt
