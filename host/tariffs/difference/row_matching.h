// The rows of two sheets, matched by their keys.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/difference/difference.h"

namespace cwt {

/// A sheet cut into its rows.
struct SheetRows {
    explicit SheetRows(std::string_view text);

    std::string_view header;
    std::vector<std::string_view> rows;
};

/// The columns of two headers, in the order of the new one, those of the old alone behind.
std::vector<ComparedColumn> ComparedColumns(std::string_view old_header,
                                            std::string_view new_header);

/// Whether the cells of two rows are the same.
bool SameCells(const std::vector<ComparedColumn>& columns, std::string_view old_row,
               std::string_view new_row);

/// Every row of either sheet, each with its match if it has one. Of rows with one key, the first is
/// matched with the first, the second with the second.
std::vector<RowDifference> MatchRows(const Subject& subject,
                                     const std::vector<ComparedColumn>& columns,
                                     const SheetRows& of_old, const SheetRows& of_new);

}  // namespace cwt
