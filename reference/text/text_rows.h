// Text files that a person can edit: a row a line, fields between bars, comments from '#' on.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace hundredweight::reference {

/// Views of a line, which hold until the next one is read.
using Fields = std::span<const std::string_view>;

/// Throws std::runtime_error with the reason, put together from its parts.
template <typename... Parts>
[[noreturn]] void Refuse(const Parts&... parts) {
    std::string reason;
    (reason.append(parts), ...);
    throw std::runtime_error(reason);
}

/// Refuses when the condition does not hold.
template <typename... Parts>
void Require(bool condition, const Parts&... reason) {
    if (!condition) Refuse(reason...);
}

template <typename Value, typename... Parts>
Value Required(std::optional<Value> value, const Parts&... reason) {
    Require(value.has_value(), reason...);
    return *value;
}

/// Hands out the rows of a directory's file in order, their fields trimmed. The directory is named
/// as the system's own functions name it, with a last separator or without. Throws
/// std::runtime_error when it cannot be read; one from a row gets file and line put before its
/// reason.
void ForEachRow(const std::string& directory, const char* name, std::size_t field_count,
                const std::function<void(Fields)>& read_row);

}  // namespace hundredweight::reference
