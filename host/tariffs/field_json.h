// The values of fields in JSON.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>

#include "tariffs/field.h"

namespace cwt {

/// True and false for yes and no, numbers as numbers where JSON writes them the same; else the
/// field's text.
nlohmann::ordered_json ValueOf(const Field& field, std::string_view bytes);

/// The same for a reader: texts without what is behind a zero byte, which ends them for the
/// library.
nlohmann::ordered_json ShownValue(const Field& field, std::string_view bytes);

/// The fields of a record for a reader, by their names; those that lie there several times as
/// arrays. Bytes that only the host knows are left out where there are none.
nlohmann::ordered_json ShownRecord(std::span<const Field> fields, std::string_view record);

}  // namespace cwt
