#include "files/digest.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>

#include "text/path_text.h"

namespace cwt {

std::uint64_t Digest(std::uint64_t digest, std::string_view bytes) {
    constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
    const auto mix = [&](std::uint64_t word) {
        digest = (digest ^ word) * kPrime;
        digest ^= digest >> 29;
    };
    mix(bytes.size());
    while (!bytes.empty()) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), std::min(bytes.size(), sizeof word));
        mix(word);
        bytes.remove_prefix(std::min(bytes.size(), sizeof word));
    }
    return digest;
}

std::uint64_t FileDigest(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string buffer(std::size_t{1} << 18, '\0');
    std::uint64_t digest = 0;
    while (stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) ||
           stream.gcount() > 0) {
        digest = Digest(digest, {buffer.data(), static_cast<std::size_t>(stream.gcount())});
    }
    if (!stream.eof() || stream.bad()) {
        throw std::runtime_error(PathText(file) + ": cannot be read");
    }
    return digest;
}

}  // namespace cwt
