#include "parts.h"

#include <algorithm>
#include <cstring>

namespace hundredweight::fuzz {
namespace {

constexpr std::size_t kLengthSize = 2;

}  // namespace

Parts ReadParts(const uint8_t* data, std::size_t size) {
    Parts parts;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (;;) {
        const std::size_t name = rest.find('\0');
        if (name == std::string_view::npos || rest.size() < name + 1 + kLengthSize) return parts;
        Values length(rest.substr(name + 1, kLengthSize));
        const std::size_t low = length.Byte();
        const std::size_t content = low + std::size_t{256} * length.Byte();
        const std::size_t begin = name + 1 + kLengthSize;
        if (rest.size() - begin < content) return parts;
        parts.push_back(
            {std::string(rest.substr(0, name)), std::string(rest.substr(begin, content))});
        rest.remove_prefix(begin + content);
    }
}

std::string PartBytes(const Parts& parts) {
    std::string bytes;
    for (const Part& part : parts) {
        const std::size_t size = std::min(part.content.size(), kLongestContent);
        bytes += part.name + '\0';
        bytes += static_cast<char>(size % 256);
        bytes += static_cast<char>(size / 256);
        bytes.append(part.content, 0, size);
    }
    return bytes;
}

std::string_view ContentOf(const Parts& parts, std::string_view name) {
    const auto found = std::find_if(parts.rbegin(), parts.rend(),
                                    [&](const Part& part) { return part.name == name; });
    return found == parts.rend() ? std::string_view{} : found->content;
}

int32_t Values::Number() {
    int32_t number = 0;
    std::memcpy(&number, Bytes(sizeof number).data(), sizeof number);
    return number;
}

std::string Values::Bytes(std::size_t size) {
    std::string bytes(rest_.substr(0, size));
    rest_.remove_prefix(bytes.size());
    bytes.resize(size);
    return bytes;
}

std::string Values::Text() {
    const std::size_t size = Byte();
    return Bytes(std::min(size, rest_.size()));
}

}  // namespace hundredweight::fuzz
