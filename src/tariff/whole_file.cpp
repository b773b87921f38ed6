#include "tariff/whole_file.h"

#include <hundredweight/exports.h>

#include <cstring>
#include <limits>
#include <utility>

#include "frame/text.h"

namespace hundredweight {
namespace {

using enum ClearedFirst;
constexpr bool kKeptWhenShort = true;

// The level file and COZ are held for the host, as are all tables here but SCC.
const WholeTable kLevelTable = {"",  18, HWT_FIELD(LevelTable), HWT_FIELD(LevelCount), 300,
                                302, 304};
const WholeTable kCozTable = {".COZ", 6,     HWT_FIELD(CozTable), HWT_FIELD(CozCount), 0, 150,
                              151,    kCount};

/// The first record of the level file, as far as the library reads it.
struct DatedRecord {
    char HostBytes[8];
    char Year[4];
    char Month[2];
    char Day[2];
};

/// MM-DD-YYYY fills the field.
void SetLevelFileDate(RateContext& context, const DatedRecord& record) {
    char* const date = context.LevelFileDate;
    std::memcpy(date, record.Month, 2);
    date[2] = '-';
    std::memcpy(date + 3, record.Day, 2);
    date[5] = '-';
    std::memcpy(date + 6, record.Year, 4);
}

}  // namespace

const WholeTable kZp6Table = {".ZP6", 12, HWT_FIELD(Zp6Table), HWT_FIELD(Zp6Count), 436, 168, 438};
const WholeTable kZp7Table = {".ZP7", 43, HWT_FIELD(Zp7Table), HWT_FIELD(Zp7Count), 582, 583, 584};
const WholeTable kSzpTable = {".SZP", 5, HWT_FIELD(SzpTable), HWT_FIELD(SzpCount), 0,
                              0,      0, kCountAndTable,      kKeptWhenShort};
// A block that cannot be had shows as a short read.
const WholeTable kSccTable = {".SCC", 8,        HWT_FIELD(SccTable), HWT_FIELD(SccCount), 460, 464,
                              464,    kNothing, kKeptWhenShort};
const WholeTable kLaTable = {".LA ", 8, HWT_FIELD(LaTable), HWT_FIELD(LaCount), 270, 272, 274};
const WholeTable kRbaTable = {".RBA", 16, HWT_FIELD(RbaTable), HWT_FIELD(RbaCount), 340, 342, 344};
const WholeTable kDchTable = {".DCH", 25, HWT_FIELD(DchTable), HWT_FIELD(DchCount), 267, 268, 269};
const WholeTable kMchTable = {".MCH", 1, HWT_FIELD(MchTable), kNoField, 182, 193, 324, kNothing,
                              false,  2};

WholeFile ReadWholeFile(const OpenFile& file, std::size_t zeros_behind) {
    WholeFile whole;
    if (file.length() > std::numeric_limits<int32_t>::max()) return whole;
    whole.length = static_cast<int32_t>(file.length());
    const auto size = static_cast<std::size_t>(whole.length);
    whole.block = AllocateBlock(size + zeros_behind);
    if (!whole.block) return whole;
    whole.arrived = platform::ReadBytes(file.handle(), whole.block.get(), size);
    whole.outcome = whole.arrived == size ? LoadOutcome::kLoaded : LoadOutcome::kShortRead;
    return whole;
}

int32_t ReadTableFrom(RateContext& context, const WholeTable& facts, const OpenFile& file) {
    WholeFile whole = ReadWholeFile(file, facts.zeros_behind);
    StoreNumber(context, facts.count, whole.length / facts.record_size);
    const bool loaded = whole.outcome == LoadOutcome::kLoaded;
    const bool kept = loaded || facts.kept_when_short;
    StoreBlock(context, facts.table, kept ? std::move(whole.block) : nullptr);
    if (loaded) return 1;
    return FailWith(context, whole.outcome == LoadOutcome::kNotAllocated ? facts.allocate_code
                                                                         : facts.read_code);
}

int32_t ReadTable(RateContext& context, const WholeTable& facts) {
    if (facts.cleared_first != kNothing) StoreNumber(context, facts.count, 0);
    if (facts.cleared_first == kCountAndTable) FreeBlockField(context, facts.table);
    const OpenFile file = OpenDataFile(context, facts.extension);
    if (!file) return FailWith(context, facts.open_code);
    return ReadTableFrom(context, facts, file);
}

}  // namespace hundredweight

using namespace hundredweight;

int32_t HWT_CALL OpenLevelFile(RateContext* context, const char* file_name) {
    const OpenFile file = FindInDataDir(*context, file_name);
    if (!file) return Fail(*context, kLevelTable.open_code);
    if (ReadTableFrom(*context, kLevelTable, file) == 0) return 0;
    if (file.length() >= static_cast<int64_t>(sizeof(DatedRecord))) {
        DatedRecord first;
        std::memcpy(&first, context->LevelTable, sizeof first);
        SetLevelFileDate(*context, first);
    }
    return 1;
}

int32_t HWT_CALL ReadCOZFile(RateContext* context) {
    const int32_t result = ReadTable(*context, kCozTable);
    if (result == 0) context->CozCount = 0;
    return result;
}
