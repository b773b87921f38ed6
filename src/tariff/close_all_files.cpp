// Release of a tariff set.
#include <hundredweight/exports.h>

#include "tariff/name_tables.h"
#include "tariff/record_fields.h"
#include "tariff/text_files.h"
#include "tariff/zmc_file.h"

using namespace hundredweight;

namespace {

constexpr FieldOffset kFirstBlocks[] = {
    HWT_FIELD(DchTable), HWT_FIELD(WsmTable),  HWT_FIELD(SzpTable), HWT_FIELD(CozTable),
    HWT_FIELD(SccTable), HWT_FIELD(ZpsRecord), HWT_FIELD(EfcTable), HWT_FIELD(LevelTable),
};
constexpr FieldOffset kIndexedFiles[] = {
    HWT_FIELD(Zf1Handle),
    HWT_FIELD(Zf2Handle),
    HWT_FIELD(ZfmHandle),
};
constexpr FieldOffset kFurtherBlocks[] = {
    HWT_FIELD(Zp6Table), HWT_FIELD(Zp7Table), HWT_FIELD(LaTable),  HWT_FIELD(RbaTable),
    HWT_FIELD(McTable),  HWT_FIELD(McaTable), HWT_FIELD(MchTable), HWT_FIELD(Zf2Entries),
};
constexpr FieldOffset kRecordFiles[] = {
    HWT_FIELD(BseHandle), HWT_FIELD(BscHandle), HWT_FIELD(FacHandle), HWT_FIELD(FccHandle),
    HWT_FIELD(AdjHandle), HWT_FIELD(ZpsHandle), HWT_FIELD(BsvHandle),
};

}  // namespace

int32_t HWT_CALL CloseAllFiles(RateContext* context) {
    FreeNameTables();
    for (const FieldOffset field : kFirstBlocks) FreeBlockField(*context, field);
    for (const FieldOffset field : kIndexedFiles) CloseHandleField(*context, field);
    for (const FieldOffset field : kFurtherBlocks) FreeBlockField(*context, field);
    for (const FieldOffset field : kRecordFiles) CloseHandleField(*context, field);
    CloseLabStream(*context);
    ReleaseZmcFile();
    return 1;
}
