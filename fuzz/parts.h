// Inputs made of named parts: a file of the set, a field of the record, an answer of a partner.
//
// A part is its name and a zero byte, the length of its content in two bytes, low byte first, and
// the content. The mutator works on one part at a time, so that a change in one never shifts the
// others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hundredweight::fuzz {

struct Part {
    std::string name;
    std::string content;
};
using Parts = std::vector<Part>;
inline constexpr std::size_t kLongestContent = 0xFFFF;

/// What lies behind the last whole part is no part.
Parts ReadParts(const uint8_t* data, std::size_t size);
std::string PartBytes(const Parts& parts);

/// The content of the last part of a name; empty when there is none.
std::string_view ContentOf(const Parts& parts, std::string_view name);

/// Every part that a target understands, with valid content. The target defines it; the mutator
/// sets out from it.
const Parts& SampleParts();

/// Values drawn from a part's content, one behind the other; zeros behind its end.
class Values {
 public:
    explicit Values(std::string_view content) : rest_(content) {}

    bool empty() const { return rest_.empty(); }
    uint8_t Byte() { return static_cast<uint8_t>(Bytes(1)[0]); }
    int32_t Number();
    /// As many bytes as asked for.
    std::string Bytes(std::size_t size);
    /// A text whose length, of up to 255, comes first; as long as the rest when that is shorter.
    std::string Text();

 private:
    std::string_view rest_;
};

}  // namespace hundredweight::fuzz
