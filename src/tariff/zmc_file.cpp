#include "tariff/zmc_file.h"

#include "tariff/data_file.h"

namespace hundredweight {

int32_t CountZmcRecords(const RateContext& context) {
    const OpenFile file = FindDataFile(context, ".ZMC");
    if (!file) return 0;
    return static_cast<int32_t>(file.length() / static_cast<int64_t>(sizeof(ZmcFileRecord)));
}

}  // namespace hundredweight
