// The files of a tariff set, what each is made of, and when a load requires it.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "session/sources.h"

namespace cwt {

/// What a load does with a file, by the set's flags and the way of rating.
enum class Need { kRequired, kOptional, kNotRead };

/// A file as it lies on disk.
struct SetFile {
    std::string extension;  ///< Without its dot; the fallback's when the set has that one.
    Need need = Need::kOptional;
    std::filesystem::path path = {};          ///< Empty when the file is missing.
    std::optional<std::uintmax_t> size = {};  ///< Bytes; nothing for what is no regular file.
    int record_size = 0;    ///< Bytes; 0 when the file is not one of equal records.
    bool is_table = false;  ///< Of any number of records.

    std::uintmax_t records() const { return *size / static_cast<std::uintmax_t>(record_size); }
    std::uintmax_t stray_bytes() const { return *size % static_cast<std::uintmax_t>(record_size); }
};

/// The set's files in the order of a load; `context` holds the settings as far as they were read.
std::vector<SetFile> ListSetFiles(const Listing& directory, const std::string& set,
                                  const RateContext& context);

/// The file that a failed load's code speaks of; empty when it speaks of none.
std::string FileOfCode(int32_t code, const std::vector<SetFile>& files);

}  // namespace cwt
