#include "tariff/zmc_record.h"

#include <algorithm>

namespace hundredweight {
namespace {

uint64_t InByteOrder(std::string_view bytes) {
    uint64_t number = 0;
    for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

template <std::size_t Size>
uint64_t InByteOrder(const char (&bytes)[Size]) {
    return InByteOrder(std::string_view(bytes, Size));
}

}  // namespace

ZmcRanges RangesOf(const ZmcFileRecord& record) {
    return {{InByteOrder(record.FirstLow), InByteOrder(record.SecondLow),
             InByteOrder(record.RateCodeLow)},
            {InByteOrder(record.FirstHigh), InByteOrder(record.SecondHigh),
             InByteOrder(record.RateCodeHigh)}};
}

ZmcKey::ZmcKey(std::string_view origin, std::string_view destination, std::string_view rate_code)
    : one_way{InByteOrder(origin), InByteOrder(destination), InByteOrder(rate_code)},
      either_way{std::min(one_way[0], one_way[1]), std::max(one_way[0], one_way[1]), one_way[2]} {}

}  // namespace hundredweight
