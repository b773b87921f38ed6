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

}  // namespace cwt
