#include "tariff/zmc_record.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "frame/bytes.h"

namespace hundredweight {
namespace {

/// The number of a field's bytes, of which the first counts most; it lies last in a number here.
/// One load has them all, with some of the record's bytes behind them.
template <std::size_t At, std::size_t Size>
uint64_t NumberAt(const ZmcFileRecord& record) {
    uint64_t number;
    static_assert(Size <= sizeof number && At + sizeof number <= sizeof record);
    std::memcpy(&number, reinterpret_cast<const char*>(&record) + At, sizeof number);
    return __builtin_bswap64(number) >> 8 * (sizeof number - Size);
}

#define HWT_NUMBER(record, field) \
    NumberAt<offsetof(ZmcFileRecord, field), sizeof(ZmcFileRecord::field)>(record)

/// The same of a text.
uint64_t NumberOf(std::string_view text) {
    uint64_t number = 0;
    for (const char byte : text) number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

}  // namespace

ZmcRanges RangesOf(const ZmcFileRecord& record) {
    return {{HWT_NUMBER(record, FirstLow), HWT_NUMBER(record, SecondLow),
             HWT_NUMBER(record, RateCodeLow)},
            {HWT_NUMBER(record, FirstHigh), HWT_NUMBER(record, SecondHigh),
             HWT_NUMBER(record, RateCodeHigh)}};
}

bool Contain(const ZmcRanges& ranges, const ZmcValues& values) {
    for (std::size_t i = 0; i < kZmcRanges; ++i) {
        if (values[i] < ranges.low[i] || values[i] > ranges.high[i]) return false;
    }
    return true;
}

ZmcKey::ZmcKey(std::string_view origin, std::string_view destination, std::string_view rate_code)
    : one_way{NumberOf(origin), NumberOf(destination), NumberOf(rate_code)},
      either_way{std::min(one_way[0], one_way[1]), std::max(one_way[0], one_way[1]), one_way[2]} {}

}  // namespace hundredweight
