#include "engine/effective_tables.h"

#include <hundredweight/exports.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "frame/block.h"
#include "frame/failure.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotRead = 140;
constexpr int32_t kCannotAllocate = 141;
constexpr std::string_view kLeftOut = "Bureau";

bool IsBureau(const EfcRecord& record) {
    return std::memcmp(record.TariffName, kLeftOut.data(), kLeftOut.size()) == 0;
}

/// What GetCurrentEfcRec is asked for. Any characters may separate the parts.
struct EfcKey {
    char TariffName[8];
    char Separator1;
    char DatePart1[4];
    char Separator2;
    char DatePart2[2];
    char Separator3;
    char DatePart3[2];
};
static_assert(sizeof(EfcKey) == 19);

bool Matches(const EfcRecord& record, const EfcKey& key) {
    return std::memcmp(record.TariffName, key.TariffName, sizeof key.TariffName) == 0 &&
           std::memcmp(record.DatePart1, key.DatePart1, sizeof key.DatePart1) == 0 &&
           std::memcmp(record.DatePart2, key.DatePart2, sizeof key.DatePart2) == 0 &&
           std::memcmp(record.DatePart3, key.DatePart3, sizeof key.DatePart3) == 0;
}

}  // namespace

int32_t BuildEfcTable(RateContext& context, void* handle,
                      Tolvex_GetEffectiveTableSizeExFunction get_size,
                      Tolvex_GetEffectiveTableExFunction get_record) {
    if (context.EfcTable != nullptr) {
        context.EfcSelection = 0;
        std::free(context.EfcTable);
        context.EfcTable = nullptr;
    }
    // The engine counts in the low 16 bits.
    const int32_t count = std::max<int32_t>(static_cast<int16_t>(get_size(handle)), 0);
    context.EfcTable =
        AllocateBlock<EfcRecord>((static_cast<std::size_t>(count) + 2) * sizeof(EfcRecord))
            .release();
    if (context.EfcTable == nullptr) return Fail(context, kCannotAllocate);
    context.EfcCount = count;
    context.BureauCount = 0;
    int32_t used = 0;
    for (int32_t index = 0; index < count; ++index) {
        EfcRecord buffer = {};
        const EfcRecord* const record = get_record(handle, &buffer, index);
        if (record == nullptr) return Fail(context, kCannotRead);
        if (IsBureau(*record)) {
            ++context.BureauCount;
        } else {
            context.EfcTable[used++] = *record;
        }
    }
    if (context.TariffSourceCode == '2' || context.NameTablesLoaded == 'Y') {
        context.BureauCount = 0;
        context.EfcCount = 1;
    } else {
        context.EfcCount = used;
    }
    return 1;
}

}  // namespace hundredweight

using namespace hundredweight;

EfcRecord* HWT_CALL GetCurrentEfcRec(RateContext* context, const char* key) {
    if (context->EfcTable == nullptr) return nullptr;
    EfcKey wanted;
    std::memcpy(&wanted, key, sizeof wanted);
    for (int32_t entry = 0; entry < context->EfcCount; ++entry) {
        if (Matches(context->EfcTable[entry], wanted)) return &context->EfcTable[entry];
    }
    return nullptr;
}
