#include "tariff/minimum_charges.h"

#include <cstring>
#include <utility>

#include "tariff/record_fields.h"
#include "tariff/whole_file.h"

namespace hundredweight {
namespace {

constexpr std::size_t kLongRecord = 12;
constexpr std::size_t kShortRecord = 10;
constexpr std::size_t kLastNumberAt = 8;  // 32 bits in a long record, 16 in a short one.

struct MinimumChargeTable {
    const char* long_extension;
    const char* short_extension;
    FieldOffset table;
    FieldOffset count;
    FieldOffset convert_in;
    FieldOffset convert_out;
    int32_t open_code;
    int32_t allocate_code;
    int32_t read_code;
};

constexpr MinimumChargeTable kMc = {".LMC",
                                    ".MC ",
                                    HWT_FIELD(McTable),
                                    HWT_FIELD(McCount),
                                    HWT_FIELD(McConvertIn),
                                    HWT_FIELD(McConvertOut),
                                    181,
                                    312,
                                    314};
constexpr MinimumChargeTable kMca = {".LCA",
                                     ".MCA",
                                     HWT_FIELD(McaTable),
                                     HWT_FIELD(McaCount),
                                     HWT_FIELD(McaConvertIn),
                                     HWT_FIELD(McaConvertOut),
                                     183,
                                     362,
                                     534};

/// Widens short records one by one through the record's scratch fields.
Block<> Widen(RateContext& context, const MinimumChargeTable& facts, const unsigned char* records,
              std::size_t count) {
    Block<> widened = AllocateBlock(count * kLongRecord);
    if (!widened) return nullptr;
    char* const in = FieldAt(context, facts.convert_in);
    char* const out = FieldAt(context, facts.convert_out);
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(in, records + i * kShortRecord, kShortRecord);
        std::memcpy(out, in, kLastNumberAt);
        StoreLittleEndian<uint32_t>(out + kLastNumberAt,
                                    LoadLittleEndian<uint16_t>(in + kLastNumberAt));
        std::memcpy(widened.get() + i * kLongRecord, out, kLongRecord);
    }
    return widened;
}

int32_t ReadShortForm(RateContext& context, const MinimumChargeTable& facts) {
    const OpenFile file = OpenDataFile(context, facts.short_extension);
    if (!file) return Fail(context, facts.open_code);
    const WholeFile whole = ReadWholeFile(file);
    const std::size_t count = static_cast<std::size_t>(whole.length) / kShortRecord;
    StoreNumber(context, facts.count, static_cast<int32_t>(count));
    FreeBlockField(context, facts.table);
    if (whole.outcome == LoadOutcome::kShortRead) return Fail(context, facts.read_code);
    Block<> widened = whole.block ? Widen(context, facts, whole.block.get(), count) : nullptr;
    if (!widened) return Fail(context, facts.allocate_code);
    StoreBlock(context, facts.table, std::move(widened));
    return 1;
}

int32_t ReadMinimumCharges(RateContext& context, const MinimumChargeTable& facts) {
    const OpenFile file = OpenDataFile(context, facts.long_extension);
    if (!file) return ReadShortForm(context, facts);
    return ReadTableFrom(context,
                         {facts.long_extension, kLongRecord, facts.table, facts.count,
                          facts.open_code, facts.allocate_code, facts.read_code},
                         file);
}

}  // namespace

int32_t ReadMcFile(RateContext& context) {
    return ReadMinimumCharges(context, kMc);
}

int32_t ReadMcaFile(RateContext& context) {
    return ReadMinimumCharges(context, kMca);
}

}  // namespace hundredweight
