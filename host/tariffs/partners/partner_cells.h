// The lines of a partner's files, their fields, and the cells that those are in a sheet.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/partners/partner_tables.h"

namespace cwt {

/// The words between blanks.
std::vector<std::string_view> WordsOf(std::string_view text);

/// Fields of a line, without blanks at their ends.
void SplitPartnerLine(std::string_view line, std::vector<std::string>& fields);
std::string PartnerLine(std::span<const std::string> fields);

/// The cells of a field, in UTF-8, in a sheet with so many rates in a row.
std::vector<std::string> CellsOf(const PartnerColumn& column, std::string_view field,
                                 std::size_t rates);

/// A field as its file has it, made of its cells; or what is wrong with one of them.
struct PartnerField {
    std::string bytes;
    std::string problem;   ///< Empty when nothing is wrong.
    std::size_t cell = 0;  ///< The one that something is wrong with.
};
PartnerField FieldOf(const PartnerColumn& column, std::span<const std::string_view> cells);

}  // namespace cwt
