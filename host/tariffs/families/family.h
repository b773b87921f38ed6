// The families of files that make a tariff set: what their records hold, and where that stands in
// the folder of text.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "tariffs/field.h"

namespace cwt {

/// How a file is made.
enum class Shape {
    kSettings,  ///< One record: a section of settings.json. What follows it is the host's.
    kArray,     ///< One record that is an array: a sheet with a row an entry.
    kTable,     ///< Records without a header: a sheet with a row each.
    kIndexed,   ///< A count, arrays of keys, positions and entries, and a data area.
    kLines,     ///< Lines of text.
    kCarried,   ///< Bytes that only a host reads.
};

/// An array within a record that has a sheet of its own. An entry that holds nothing but the
/// family's filling has no row. Behind a table's record number, the first column counts the entries
/// from 1.
struct Inner {
    const char* sheet;
    const char* number;  ///< Name of the column that counts.
    std::size_t offset;
    std::size_t stride;
    std::size_t count;
    std::span<const Field> fields;
    const char* of = nullptr;  ///< In a table, the column that repeats the record's first field.
};

struct Family {
    const char* extension;  ///< Behind the set's name; or the whole name, when it has a dot.
    Shape shape;
    /// The sheet ("zip-ranges.csv"), or of settings the section ("defaults").
    const char* text;
    std::size_t record_size;
    std::span<const Field> fields;
    const char* words;  ///< What the file is, in the words of the trade.
    /// Records that the library takes; 0 for any number. It leaves the others unread.
    std::size_t most = 0;
    char filling = ' ';  ///< Of records and arrays where nothing is written.
    std::span<const Inner> inner = {};
    bool has_more = false;  ///< The host has bytes of its own behind the records.
};

extern const std::span<const Family> kSettingsFamilies;  ///< Of one record each.
extern const std::span<const Family> kTableFamilies;     ///< Of any number of records or lines.
extern const std::span<const Family> kProfileFamilies;   ///< The users' own.

/// All of them, in the order in which they are exported.
const std::vector<Family>& Families();

/// The family of an extension ("ZP6") or of a whole name ("PROFILE.FIL"); null when there is none.
const Family* FamilyOf(std::string_view extension);

/// The file of the folder in which a family stands.
const char* TextFileOf(const Family& family);

// What is exported by the same rules under names of their own.
extern const Family kZipTable;           ///< A profile's own ZIP table.
extern const Family kOptionFile;         ///< An option file of the current layout.
extern const Family kEarlierOptionFile;  ///< One of the earlier layout.

}  // namespace cwt
