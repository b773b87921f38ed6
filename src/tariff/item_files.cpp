#include "tariff/item_files.h"

#include <hundredweight/exports.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>

#include "frame/bounds.h"
#include "frame/text.h"
#include "tariff/record_fields.h"
#include "tariff/written_file.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotOpenAcc = 490;
constexpr int32_t kCannotReadAcc = 494;
constexpr WriteCodes kAccCodes = {520, 246};
constexpr int32_t kCannotOpenAdj = 210;
constexpr int32_t kCannotReadAdj = 214;

constexpr std::size_t kAccRecordSize = sizeof(RateContext::AccRecords[0]);
constexpr std::size_t kAdjRecordSize = sizeof(RateContext::AdjRecord);
constexpr std::size_t kAdjKeySize = sizeof(RateContext::AdjKeys[0]);
constexpr std::size_t kAdjCapacity = sizeof(RateContext::AdjKeys) / kAdjKeySize;

std::string_view ItemCode(const char (&record)[kAccRecordSize]) {
    return WholeField(record).substr(2, 3);
}

}  // namespace

int32_t ReadAccFile(RateContext& context) {
    const OpenFile file = OpenDataFile(context, ".ACC");
    if (!file) return Fail(context, kCannotOpenAcc);
    const std::size_t count =
        file.ReadHead(context.AccRecords, sizeof context.AccRecords) / kAccRecordSize;
    std::memset(context.Acc232Index, -1, sizeof context.Acc232Index);
    std::memset(context.Acc218Index, -1, sizeof context.Acc218Index);
    if (count == 0) return Fail(context, kCannotReadAcc);
    int32_t next_232 = 0;
    int32_t next_218 = 0;
    for (std::size_t item = 0; item < count; ++item) {
        const std::string_view code = ItemCode(context.AccRecords[item]);
        if (code == "232") context.Acc232Index[next_232++] = static_cast<int32_t>(item);
        if (code == "218") context.Acc218Index[next_218++] = static_cast<int32_t>(item);
    }
    context.AccCount = static_cast<int32_t>(count);
    return 1;
}

int32_t ReadAdjFile(RateContext& context) {
    context.AdjCount = 0;
    ResetHandleField(context, HWT_FIELD(AdjHandle));
    OpenFile file = OpenDataFile(context, ".ADJ");
    if (!file) return Fail(context, kCannotOpenAdj);
    const auto size =
        static_cast<std::size_t>(std::min<int64_t>(file.length(), kAdjCapacity * kAdjRecordSize));
    const Block<char> records = AllocateBlock<char>(size);
    if (!records || file.ReadHead(records.get(), size) < size) {
        return Fail(context, kCannotReadAdj);
    }
    for (std::size_t at = 0; at < size; at += kAdjRecordSize) {
        const std::size_t arrived = std::min(kAdjRecordSize, size - at);
        std::memcpy(context.AdjRecord, records.get() + at, arrived);
        if (arrived == kAdjRecordSize) {
            std::memcpy(context.AdjKeys[context.AdjCount++], context.AdjRecord, kAdjKeySize);
        }
    }
    StoreHandle(context, HWT_FIELD(AdjHandle), std::move(file));
    return 1;
}

}  // namespace hundredweight

using namespace hundredweight;

int32_t HWT_CALL WriteAccFile(RateContext* context) {
    const auto count =
        static_cast<std::size_t>(BoundedCount(context->AccCount, std::size(context->AccRecords)));
    return WriteFile(*context, SetPathInCurrentDir(*context, ".ACC"),
                     {context->AccRecords[0], count * kAccRecordSize}, kAccCodes);
}
