// Numbers for keys, in the order in which the keys came.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace hundredweight::reference {

class Numbering {
 public:
    using Key = std::uint64_t;
    using Number = std::uint32_t;

    std::optional<Number> Find(Key key) const;
    /// The key's number, a new one unless it has one.
    Number Add(Key key);

    Key KeyOf(Number number) const { return keys_[number]; }
    std::size_t Size() const { return keys_.size(); }

 private:
    static constexpr Number kFree = 0xFFFFFFFF;

    /// The slot of a key, or the free one that it belongs in.
    std::size_t SlotOf(Key key) const;
    void Grow();

    std::vector<Key> keys_;
    std::vector<Number> slots_ = std::vector<Number>(16, kFree);  ///< A power of two, half free.
};

}  // namespace hundredweight::reference
