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

/// Bytes as a number, the first one highest: such numbers order as memcmp orders the bytes.
template <class Number>
Number LoadBigEndian(const void* from) {
    if constexpr (sizeof(Number) == 2) {
        return __builtin_bswap16(LoadLittleEndian<Number>(from));
    } else if constexpr (sizeof(Number) == 4) {
        return __builtin_bswap32(LoadLittleEndian<Number>(from));
    } else {
        static_assert(sizeof(Number) == 8);
        return __builtin_bswap64(LoadLittleEndian<Number>(from));
    }
}

}  // namespace hundredweight
