// Tables that are the whole content of a file, read in one read into one block.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>
#include <cstdint>

#include "frame/block.h"
#include "tariff/data_file.h"
#include "tariff/record_fields.h"

namespace hundredweight {

enum class LoadOutcome { kLoaded, kNotAllocated, kShortRead };

/// What a whole-file read gave. After a short read the block holds what arrived, then zeros.
struct WholeFile {
    LoadOutcome outcome = LoadOutcome::kNotAllocated;
    Block<> block;
    int32_t length = 0;       ///< Bytes of the file, also when there is no block.
    std::size_t arrived = 0;  ///< Bytes that were read.
};

/// Reads a freshly opened file into a block with some zero bytes behind it.
WholeFile ReadWholeFile(const OpenFile& file, std::size_t zeros_behind = 0);

/// What of an earlier load goes before the file is looked for.
enum class ClearedFirst { kNothing, kCount, kCountAndTable };

/// What is peculiar to the table of one extension. A code of 0 is not stored.
struct WholeTable {
    const char* extension;
    int32_t record_size;
    FieldOffset table;
    FieldOffset count;  ///< kNoField when the table is not counted.
    int32_t open_code;
    int32_t allocate_code;
    int32_t read_code;
    ClearedFirst cleared_first = ClearedFirst::kNothing;
    bool kept_when_short = false;  ///< What arrived of a short read stays in the record.
    std::size_t zeros_behind = 0;
};

extern const WholeTable kZp6Table;
extern const WholeTable kZp7Table;
extern const WholeTable kSzpTable;
extern const WholeTable kSccTable;
extern const WholeTable kLaTable;
extern const WholeTable kRbaTable;
extern const WholeTable kDchTable;
extern const WholeTable kMchTable;

/// Reads a table of the set. Result: 1, or 0 with the table's code.
int32_t ReadTable(RateContext& context, const WholeTable& facts);
/// The same from a file that is open already.
int32_t ReadTableFrom(RateContext& context, const WholeTable& facts, const OpenFile& file);

}  // namespace hundredweight
