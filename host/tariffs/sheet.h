// A sheet of the folder: CSV in UTF-8 with a header, every cell with its place.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/finding.h"

namespace cwt {

/// Files by their name within a folder, with slashes: "engine/lanes.csv".
using Files = std::map<std::string, std::string>;

class SheetWriter {
 public:
    explicit SheetWriter(std::string& text) : text_(text) {}

    void Cell(std::string_view text);
    void EndRow();

 private:
    std::string& text_;
    bool first_ = true;
};

/// Reads rows under the columns that are asked for, whatever their order in the sheet. Columns that
/// nobody asks for are told, and so is a row that has another number of cells than the header.
class SheetReader {
 public:
    struct Wanted {
        std::string name;
        bool is_needed;  ///< A sheet without this column is refused.
    };

    SheetReader(std::string file, std::string_view text, const std::vector<Wanted>& columns,
                Findings& findings);

    /// Goes to the next row that has anything in it. Result: whether there is one.
    bool Next();

    /// The cell of the column that was asked for at this place; empty when the sheet has none.
    std::string_view cell(std::size_t column) const;
    /// The number from 1 to `most` in a cell; 0, which is refused, for anything else.
    std::size_t Number(std::size_t column, std::size_t most);
    /// Refuses or warns of a cell of the present row: its column's name, what it holds, the text.
    void Refuse(std::size_t column, const std::string& text);
    void Warn(std::size_t column, const std::string& text);
    /// A cell of the present row in words: its column's name, and what it holds.
    std::string Words(std::size_t column) const;
    Place place() const { return {file_, line_, 0}; }
    Place place(std::size_t column) const;

 private:
    bool ReadRow();
    void DropBlankCells(std::size_t width);
    void ReadHeader(const std::vector<Wanted>& columns);

    std::string file_;
    std::string_view rest_;  ///< What has not been read.
    std::string_view row_;
    Findings& findings_;
    std::vector<std::string> cells_;
    std::size_t width_ = 0;             ///< Cells of the header.
    std::vector<std::string> names_;    ///< Of the columns that were asked for.
    std::vector<std::size_t> indexes_;  ///< Where each of them stands; npos for none.
    std::size_t line_ = 0, next_line_ = 1;
};

}  // namespace cwt
