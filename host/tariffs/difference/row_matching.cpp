#include "tariffs/difference/row_matching.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "text/csv.h"

namespace cwt {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

/// Makes the key of a row from its cells.
class KeyMaker {
 public:
    /// `in_old` tells whose cells they are. Without any of the columns the row is its own key.
    KeyMaker(const Subject& subject, const std::vector<ComparedColumn>& columns, bool in_old) {
        if (subject.row_name == nullptr) return;
        for (const std::string& name : KeyColumns(subject.row_name)) {
            const auto column = std::ranges::find(columns, name, &ComparedColumn::name);
            if (column == columns.end() || column->in_old == std::string::npos ||
                column->in_new == std::string::npos) {
                continue;
            }
            indexes_.push_back(in_old ? column->in_old : column->in_new);
        }
    }

    std::string operator()(std::string_view row) {
        if (indexes_.empty()) return std::string(row);
        SplitCsvRow(row, cells_);
        std::string key;
        for (const std::size_t index : indexes_) {
            if (index < cells_.size()) key += cells_[index];
            key += '\n';
        }
        return key;
    }

 private:
    std::vector<std::size_t> indexes_;
    std::vector<std::string> cells_;
};

/// The old rows of each key, in their order, to be taken one by one.
class RowsByKey {
 public:
    explicit RowsByKey(std::size_t rows) : next_(rows, kNone) { chains_.reserve(rows); }

    void Add(std::string key, std::uint32_t row) {
        const auto [chain, is_new] = chains_.try_emplace(std::move(key), Chain{row, row});
        if (is_new) return;
        // Behind a chain that was taken to its end none is added: all are there before.
        next_[chain->second.last] = row;
        chain->second.last = row;
    }

    std::uint32_t Take(const std::string& key) {
        const auto chain = chains_.find(key);
        if (chain == chains_.end() || chain->second.first == kNone) return kNone;
        const std::uint32_t row = chain->second.first;
        chain->second.first = next_[row];
        return row;
    }

 private:
    struct Chain {
        std::uint32_t first, last;
    };
    std::unordered_map<std::string, Chain> chains_;
    std::vector<std::uint32_t> next_;
};

/// The old row of each new one, kNone where it has none.
std::vector<std::uint32_t> MatchesByKey(const Subject& subject,
                                        const std::vector<ComparedColumn>& columns,
                                        const SheetRows& of_old, const SheetRows& of_new) {
    const std::size_t old_size = of_old.rows.size(), new_size = of_new.rows.size();
    std::vector<std::uint32_t> matches(new_size, kNone);
    // What is alike at both ends needs no keys: mostly that is nearly all.
    const std::size_t shorter = of_old.header == of_new.header ? std::min(old_size, new_size) : 0;
    std::size_t first = 0;
    for (; first < shorter && of_old.rows[first] == of_new.rows[first]; ++first) {
        matches[first] = static_cast<std::uint32_t>(first);
    }
    std::size_t behind = 0;
    for (; behind < shorter - first &&
           of_old.rows[old_size - 1 - behind] == of_new.rows[new_size - 1 - behind];
         ++behind) {
        matches[new_size - 1 - behind] = static_cast<std::uint32_t>(old_size - 1 - behind);
    }
    RowsByKey old_rows(old_size);
    KeyMaker old_key(subject, columns, true), new_key(subject, columns, false);
    for (std::size_t i = first; i < old_size - behind; ++i) {
        old_rows.Add(old_key(of_old.rows[i]), static_cast<std::uint32_t>(i));
    }
    for (std::size_t i = first; i < new_size - behind; ++i) {
        matches[i] = old_rows.Take(new_key(of_new.rows[i]));
    }
    return matches;
}

/// Which of the old rows' numbers stand outside the longest series that ascends: the fewest rows
/// that need to move to make one order of the other.
std::vector<bool> Moved(const std::vector<std::uint32_t>& matches) {
    std::vector<std::uint32_t> ends;  ///< Where the best series of each length ends.
    std::vector<std::uint32_t> before(matches.size(), kNone);
    for (std::uint32_t i = 0; i < matches.size(); ++i) {
        if (matches[i] == kNone) continue;
        const auto place =
            std::ranges::lower_bound(ends, matches[i], {}, [&](auto end) { return matches[end]; });
        if (place != ends.begin()) before[i] = *(place - 1);
        place == ends.end() ? ends.push_back(i) : void(*place = i);
    }
    std::vector<bool> moved(matches.size());
    for (std::uint32_t i = 0; i < matches.size(); ++i) moved[i] = matches[i] != kNone;
    for (std::uint32_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i]) {
        moved[i] = false;
    }
    return moved;
}

std::uint32_t NumberOf(std::size_t index) {
    return static_cast<std::uint32_t>(index + 1);
}

}  // namespace

SheetRows::SheetRows(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    for (bool is_header = true; !text.empty(); is_header = false) {
        const std::string_view row = text.substr(0, CsvRowEnd(text, true, text.size()));
        text.remove_prefix(row.size());
        is_header ? void(header = row) : rows.push_back(row);
    }
}

std::vector<ComparedColumn> ComparedColumns(std::string_view old_header,
                                            std::string_view new_header) {
    std::vector<ComparedColumn> columns;
    const std::vector<std::string> old_names = CellsOf(old_header), new_names = CellsOf(new_header);
    for (std::size_t i = 0; i < new_names.size(); ++i) {
        columns.push_back({new_names[i], std::string::npos, i});
    }
    for (std::size_t i = 0; i < old_names.size(); ++i) {
        const auto same = std::ranges::find_if(columns, [&](const ComparedColumn& column) {
            return column.name == old_names[i] && column.in_old == std::string::npos;
        });
        if (same != columns.end()) {
            same->in_old = i;
        } else {
            columns.push_back({old_names[i], i, std::string::npos});
        }
    }
    return columns;
}

std::vector<std::string> KeyColumns(const char* row_name) {
    std::vector<std::string> names;
    std::string_view rest = row_name;
    for (std::size_t open = rest.find('{'); open != rest.npos; open = rest.find('{')) {
        rest.remove_prefix(open + 1);
        names.emplace_back(rest.substr(0, rest.find('}')));
    }
    return names;
}

bool SameCells(const std::vector<ComparedColumn>& columns, std::string_view old_row,
               std::string_view new_row) {
    const std::vector<std::string> old_cells = CellsOf(old_row), new_cells = CellsOf(new_row);
    const auto at = [](const std::vector<std::string>& cells, std::size_t index) {
        return index < cells.size() ? std::string_view(cells[index]) : std::string_view();
    };
    // A row that is longer than its header differs as a whole.
    const auto width = [&](std::size_t ComparedColumn::*side) {
        return static_cast<std::size_t>(std::ranges::count_if(
            columns, [&](const auto& each) { return each.*side != std::string::npos; }));
    };
    if (old_cells.size() > width(&ComparedColumn::in_old) ||
        new_cells.size() > width(&ComparedColumn::in_new)) {
        return old_cells == new_cells;
    }
    return std::ranges::all_of(columns, [&](const ComparedColumn& column) {
        return at(old_cells, column.in_old) == at(new_cells, column.in_new);
    });
}

std::vector<RowDifference> MatchRows(const Subject& subject,
                                     const std::vector<ComparedColumn>& columns,
                                     const SheetRows& of_old, const SheetRows& of_new) {
    const bool is_by_number = subject.row_name != nullptr && KeyColumns(subject.row_name).empty();
    std::vector<std::uint32_t> matches;
    if (is_by_number) {
        matches.resize(of_new.rows.size(), kNone);
        for (std::uint32_t i = 0; i < matches.size(); ++i) {
            if (i < of_old.rows.size()) matches[i] = i;
        }
    } else {
        matches = MatchesByKey(subject, columns, of_old, of_new);
    }
    const std::vector<bool> moved =
        subject.order == Order::kFree ? std::vector<bool>(matches.size()) : Moved(matches);
    const bool same_headers = of_old.header == of_new.header;
    std::vector<RowDifference> rows;
    rows.reserve(std::max(of_old.rows.size(), of_new.rows.size()));
    std::vector<bool> taken(of_old.rows.size());
    for (std::size_t i = 0; i < matches.size(); ++i) {
        RowDifference row = {{}, of_new.rows[i], 0, NumberOf(i), false, moved[i]};
        if (matches[i] != kNone) {
            taken[matches[i]] = true;
            row.of_old = of_old.rows[matches[i]];
            row.old_number = NumberOf(matches[i]);
            row.is_changed = !(same_headers && row.of_old == row.of_new) &&
                             !SameCells(columns, row.of_old, row.of_new);
        }
        rows.push_back(row);
    }
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (!taken[i]) rows.push_back({of_old.rows[i], {}, NumberOf(i), 0, false, false});
    }
    return rows;
}

}  // namespace cwt
