// The records and functions of the public headers, described as data.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace languages {

using Json = nlohmann::ordered_json;

/// Reads the public headers into the document that record.json holds.
Json DescribeHeaders(const std::filesystem::path& headers);

/// Adds the width and the offset of each field and the size of each record, for pointers of 32 and
/// of 64 bits.
void LayOut(Json& records);

/// Adds to each field what it is measured in and who writes it, as its comments tell.
void AddUnitsAndWriters(Json& records);

}  // namespace languages
