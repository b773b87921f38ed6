// Every message that has a code, with its cause and its cure.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace cwt {

/// The code under which the words of the base-rate engine are explained.
inline constexpr int32_t kEnginesWords = -1;

/// A message, when it comes and what to do about it, in lines of at most 80 columns; nothing for a
/// code without a message.
std::optional<std::string> ExplainMessage(int32_t code);

/// The codes that the library and cwt give, in their order, with what each says.
std::map<int32_t, std::string> ExplainedCodes();

/// All of them, as Markdown.
std::string MessageGuide();

}  // namespace cwt
