// A built set while it is looked through: its records by column, and what is doubtful about them
// with the place where the folder says it.
#pragma once

#include <fmt/core.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tariffs/folder.h"

namespace cwt {

/// The records of a file, or the entries of an array within them, as rows from 0.
class Table {
 public:
    Table(const Family& family, std::string_view bytes);
    Table(const Family& family, std::string_view bytes, const Inner& inner);

    std::size_t size() const;
    std::string_view row(std::size_t index) const;
    /// A column by its name, which the table has.
    const Column& column(std::string_view name) const;
    std::string_view bytes(std::size_t index, const Column& column) const {
        return column.In(row(index));
    }

    const Family& family;
    const Inner* inner = nullptr;
    std::vector<Column> columns;

 private:
    std::string_view bytes_;
};

class CheckedSet {
 public:
    CheckedSet(const Files& built, FolderReader& folder) : built_(built), folder_(folder) {}

    /// The records of a file of the set, by its extension; none when there is no such file.
    Table TableOf(std::string_view extension) const;
    /// The entries of an array within them, by its sheet.
    Table TableOf(std::string_view extension, std::string_view sheet) const;
    bool HasFile(const std::string& name) const { return built_.contains(name); }

    /// Doubts what a row holds in a column. Of doubts for one reason the first few are told.
    template <class... Args>
    void Doubt(const Table& table, std::size_t row, const Column& column,
               fmt::format_string<Args...> reason, Args&&... args) {
        Add(table, row, column, std::nullopt, reason, fmt::make_format_args(args...));
    }
    /// The same, and names the line of another row of the table.
    template <class... Args>
    void DoubtAgainst(const Table& table, std::size_t row, const Column& column,
                      std::optional<std::size_t> other, fmt::format_string<Args...> reason,
                      Args&&... args) {
        Add(table, row, column, other, reason, fmt::make_format_args(args...));
    }
    /// Tells what is not looked at.
    void Note(const Table& table, std::string text);

    /// Warns of all that was doubted.
    void Tell();

 private:
    struct OneDoubt {
        std::string sheet;
        std::string_view kind;  ///< The words of its reason.
        std::size_t row;
        std::string column;
        std::optional<std::size_t> other;
        std::string text;
        Place place = {};
        std::size_t other_line = 0;
    };

    void Add(const Table& table, std::size_t row, const Column& column,
             std::optional<std::size_t> other, fmt::string_view reason, fmt::format_args args);
    void FindPlaces(const std::string& sheet, const Table& table);
    void FindSettingPlaces(const std::string& section);
    std::string FileOf(std::string_view extension) const;

    const Files& built_;
    FolderReader& folder_;
    std::vector<OneDoubt> doubts_;
    std::map<std::string, Table> tables_;  ///< Of the doubts, by their sheets.
    std::map<std::pair<std::string, std::string_view>, std::size_t> counts_;
};

}  // namespace cwt
