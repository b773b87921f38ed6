// What another tariff makes of the same shipments: two outputs of a batch, added up side by side.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>

#include "comparison/batch_row.h"
#include "comparison/histogram.h"

namespace cwt {

/// Cents of the old rows and of the new ones.
struct Sum {
    int64_t of_old = 0;
    int64_t of_new = 0;

    void Add(int64_t each_old, int64_t each_new) {
        of_old += each_old;
        of_new += each_new;
    }
    int64_t change() const { return of_new - of_old; }
};

/// Shipments, or lines of them, of one kind.
struct Group {
    int64_t count = 0;
    int64_t rose = 0;
    int64_t fell = 0;
    Sum sum;

    void Add(int64_t each_old, int64_t each_new) {
        ++count;
        rose += each_new > each_old ? 1 : 0;
        fell += each_new < each_old ? 1 : 0;
        sum.Add(each_old, each_new);
    }
};

/// On how many shipments something was on one side, on both or on none.
struct Occurrence {
    int64_t both = 0, old_only = 0, new_only = 0, neither = 0;

    void Add(bool in_old, bool in_new) {
        ++(in_old ? (in_new ? both : old_only) : (in_new ? new_only : neither));
    }
};

/// One of the two outputs.
struct ComparedSide {
    std::string file;
    std::map<std::pair<std::string, std::string>, int64_t> tariffs;  ///< Rows by name and date.
    int64_t rated_alone = 0;      ///< Rows that the other side did not rate,
    int64_t rated_alone_due = 0;  ///< and what they come to.
};

constexpr std::size_t kStatuses = 3;

/// Everything but the statuses is of the shipments that both sides rated. A group is made by what
/// the old side says, so that both of its sums are of the same shipments.
struct Comparison {
    ComparedSide of_old, of_new;
    int64_t rows = 0;
    std::array<std::array<int64_t, kStatuses>, kStatuses> statuses = {};  ///< Old, then new.
    int64_t other_reason = 0;  ///< Refused in both, or failed in both, for another reason.
    Group total;               ///< By total due.
    Sum gross, deficit, discount, net, surcharge;
    Occurrence deficit_taken, minimum_held;
    int64_t other_discount_percent = 0, other_break = 0, other_class = 0;
    Histogram percent;         ///< Changes of the total due in tenths of a per cent of the old one.
    Histogram cents;           ///< The same in cents.
    int64_t without_base = 0;  ///< Old totals that are not above zero have no per cent.
    std::unordered_map<std::string, Group> lanes;  ///< By "303 to 606".
    std::map<int64_t, Group> breaks;               ///< By lowest weight.
    std::map<std::string, Group> classes;          ///< Line charges by the class they are rated as.

    void Add(const BatchRow& old_row, const BatchRow& new_row);
};

struct ComparedFiles {
    std::string old_path, new_path;
    std::string form;  ///< "ndjson" or "csv"; empty: as each file's name ends.
    std::string old_data = {}, new_data = {};  ///< What they were rated under, where that is known.
};

/// Whether anything that is compared differs.
bool Changed(const BatchRow& old_row, const BatchRow& new_row);

using ForEachPair = std::function<void(const BatchRow&, const BatchRow&)>;

/// Reads both files once, side by side, and shows each pair of rows. Throws Broken when a file is
/// no output of a batch, or where the two are not of the same shipments.
Comparison CompareRows(const ComparedFiles& files, const ForEachPair& show);

}  // namespace cwt
