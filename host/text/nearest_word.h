// What somebody who wrote an unknown word most likely meant.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// The known word that is nearest to a written one; none when no word is near.
std::vector<std::string> NearestWord(std::string_view written,
                                     std::span<const std::string_view> known);

/// Whether one character that is put in, left out, replaced or changed with its neighbour makes one
/// word of the other.
bool IsOneSlipApart(std::string_view a, std::string_view b);

}  // namespace cwt
