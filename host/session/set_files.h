// The files of a tariff set as they lie on disk, and when a load requires each.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "session/sources.h"

namespace cwt {

struct Family;

/// What a load does with a file, by the set's flags and the way of rating.
enum class Need { kRequired, kOptional, kNotRead };

struct SetFile {
    std::string extension;  ///< Without its dot; the fallback's when the set has that one.
    Need need = Need::kOptional;
    std::filesystem::path path = {};          ///< Empty when the file is missing.
    std::optional<std::uintmax_t> size = {};  ///< Bytes; nothing for what is no regular file.
    const Family* family = nullptr;           ///< What it is made of.

    /// Whether it has any number of records. Of the others a record alone is read, and what is
    /// behind it is the host's.
    bool is_table() const;
    /// Bytes; 0 when the file is not one of equal records.
    std::size_t record_size() const;
    std::uintmax_t records() const { return *size / record_size(); }
    std::uintmax_t stray_bytes() const { return *size % record_size(); }
    /// Throws Broken when a load passes over an end within a record: what is missing would be rated
    /// without.
    void RequireWhole() const;
};

/// The set's files in the order of a load; `context` holds the settings as far as they were read.
std::vector<SetFile> ListSetFiles(const Listing& directory, const std::string& set,
                                  const RateContext& context);

/// The file that a failed load's code speaks of; empty when it speaks of none.
std::string FileOfCode(int32_t code, const std::vector<SetFile>& files);

}  // namespace cwt
