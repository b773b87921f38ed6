#include "reference/engine/numbering.h"

namespace hundredweight::reference {

std::size_t Numbering::SlotOf(Key key) const {
    // Multiplied by 2^64 over the golden ratio, keys that differ little lie far apart.
    constexpr Key kFactor = 0x9E3779B97F4A7C15;
    const std::size_t mask = slots_.size() - 1;
    auto slot = static_cast<std::size_t>((key ^ key >> 32) * kFactor >> 32) & mask;
    while (slots_[slot] != kFree && keys_[slots_[slot]] != key) slot = (slot + 1) & mask;
    return slot;
}

std::optional<Numbering::Number> Numbering::Find(Key key) const {
    const Number number = slots_[SlotOf(key)];
    return number == kFree ? std::nullopt : std::optional(number);
}

Numbering::Number Numbering::Add(Key key) {
    const std::size_t slot = SlotOf(key);
    if (slots_[slot] != kFree) return slots_[slot];
    const auto number = static_cast<Number>(keys_.size());
    keys_.push_back(key);
    slots_[slot] = number;
    if (2 * keys_.size() > slots_.size()) Grow();
    return number;
}

void Numbering::Grow() {
    slots_.assign(2 * slots_.size(), kFree);
    for (std::size_t number = 0; number < keys_.size(); ++number) {
        slots_[SlotOf(keys_[number])] = static_cast<Number>(number);
    }
}

}  // namespace hundredweight::reference
