// Numbers in packed records and byte buffers, which may lie at any address.
#pragma once

#include <bit>
#include <cstring>
#include <type_traits>

namespace hundredweight {

static_assert(std::endian::native == std::endian::little,
              "records and files are little-endian and are read as they lie");

template <class Number>
Number LoadLittleEndian(const void* from) {
    static_assert(std::is_arithmetic_v<Number>);
    Number value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class Number>
void StoreLittleEndian(void* to, Number value) {
    static_assert(std::is_arithmetic_v<Number>);
    std::memcpy(to, &value, sizeof value);
}

}  // namespace hundredweight
