// Tells whether bytes are the same as earlier ones, against mishaps and not against enemies.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace cwt {

/// The digest of what one was made of, with bytes behind it.
std::uint64_t Digest(std::uint64_t digest, std::string_view bytes);

/// Of a file. Throws std::runtime_error, with the reason, when it cannot be read.
std::uint64_t FileDigest(const std::filesystem::path& file);

}  // namespace cwt
