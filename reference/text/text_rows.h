// Text files that a person can edit: a row a line, fields between bars, comments from '#' on.
#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace hundredweight::reference {

using Fields = std::vector<std::string>;

/// Throws std::runtime_error with the reason when the condition does not hold.
inline void Require(bool condition, const std::string& reason) {
    if (!condition) throw std::runtime_error(reason);
}

template <typename Value>
Value Required(std::optional<Value> value, const std::string& reason) {
    Require(value.has_value(), reason);
    return *value;
}

/// Hands out the rows of a directory's file in order, their fields trimmed. The directory is named
/// as the system's own functions name it, with a last separator or without. Throws
/// std::runtime_error when it cannot be read; one from a row gets file and line put before its
/// reason.
void ForEachRow(const std::string& directory, const char* name, std::size_t field_count,
                const std::function<void(const Fields&)>& read_row);

}  // namespace hundredweight::reference
