#include "tariff/zmc_file.h"

#include <algorithm>
#include <limits>

#include "tariff/data_file.h"

namespace hundredweight {

int32_t CountZmcRecords(const RateContext& context) {
    const OpenFile file = OpenDataFile(context, ".ZMC");
    if (!file) return 0;
    constexpr int64_t kRecordSize = sizeof(ZmcFileRecord);
    return static_cast<int32_t>(
        std::min<int64_t>(file.length() / kRecordSize, std::numeric_limits<int32_t>::max()));
}

}  // namespace hundredweight
