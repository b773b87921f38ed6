#include "discounts/discount_sources.h"

#include <cstring>
#include <iterator>

#include "discounts/discount_records.h"
#include "frame/bounds.h"
#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr char kFromGroup = 'C';
constexpr char kFromEntry = 'P';
constexpr char kFromZipRecord = 'Z';
constexpr char kDirectService = 'D';

/// Groups by selector: both points of service code 'D' in one state, in two; otherwise in one
/// state, in two.
struct GroupChoice {
    char selector;
    int32_t groups[4];
};
constexpr GroupChoice kGroupChoices[] = {
    {'1', {0, 0, 0, 0}}, {'2', {0, 0, 1, 1}}, {'3', {0, 1, 0, 1}},
    {'4', {0, 1, 2, 3}}, {'5', {2, 0, 3, 1}},
};

/// A postal code as ZIP-range records are searched by it.
using ZipKey = char[7];

void SetFlatPercent(RateContext& context, std::string_view text) {
    FillField(context.DiscountFlatText, '\0');
    context.DiscountFlatPercent = 0;
    if (context.NoFlatDiscountFlag == 'Y') return;
    CopyText(context.DiscountFlatText, text);
    context.DiscountFlatPercent = ReadSingle(text);
}

void SetFloor(RateContext& context, std::string_view text) {
    CopyText(context.DiscountFloorText, text);
    context.DiscountFloor = ReadSingle(text);
}

/// A 3-character code stands for all codes that begin with it: K1A becomes K1A0A.
void PutZipKey(ZipKey& key, const char (&zip)[7], std::size_t length) {
    FillField(key, '\0');
    CopyText(key, TerminatedText(zip));
    if (IsLetter(key[0]) && TerminatedText(key).size() < length) std::memcpy(key + 3, "0A", 2);
}

bool InRange(const ZipKey& key, const char (&low)[7], const char (&high)[7], std::size_t length) {
    return std::memcmp(key, low, length) >= 0 && std::memcmp(key, high, length) <= 0;
}

struct ShipmentKeys {
    ZipKey origin;
    ZipKey destination;
    std::size_t length;  ///< Characters that count.
};

bool Matches(const RateContext& context, const ShipmentKeys& keys,
             const ZipDiscountRecord& record) {
    const std::string_view low = WholeField(record.OrigLow).substr(0, keys.length);
    const bool state_record = low.find_first_not_of(' ') == std::string_view::npos;
    if (state_record) {
        return std::memcmp(record.OrigHigh, context.OrigState, 2) == 0 &&
               std::memcmp(record.DestHigh, context.DestState, 2) == 0;
    }
    return InRange(keys.origin, record.OrigLow, record.OrigHigh, keys.length) &&
           InRange(keys.destination, record.DestLow, record.DestHigh, keys.length);
}

void ApplyZipRecord(RateContext& context, const ZipDiscountRecord& record) {
    context.DiscountSource = kFromZipRecord;
    SetFloor(context, WholeField(record.Floor));
    context.DiscountFlatPercent =
        context.NoFlatDiscountFlag == 'Y' ? 0 : ReadSingle(WholeField(record.FlatPercent));
    for (int32_t i = 0; i < kWeightColumns; ++i) {
        context.DiscountBreakPercent[i] = ReadSingle(WholeField(record.BreakPercent[i]));
    }
}

}  // namespace

int32_t DiscountColumns(const RateContext& context) {
    return BoundedCount(context.DiscBreakCount, kWeightColumns);
}

int32_t SameState(const RateContext& context) {
    return std::memcmp(context.OrigState, context.DestState, 2) == 0 ? 1 : 0;
}

int32_t SelectDiscountGroup(const RateContext& context) {
    const bool both_direct =
        context.OrigServiceCode == kDirectService && context.DestServiceCode == kDirectService;
    const int32_t place = (both_direct ? 0 : 2) + (SameState(context) == 1 ? 0 : 1);
    for (const GroupChoice& choice : kGroupChoices) {
        if (choice.selector == context.DisGroupSelector) return choice.groups[place];
    }
    return 0;
}

void ApplyGroupDiscount(RateContext& context) {
    const DiscountGroup group = GroupAt(context, SelectDiscountGroup(context));
    context.DiscountSource = kFromGroup;
    SetFlatPercent(context, WholeField(group.FlatPercent));
    SetFloor(context, WholeField(group.Floor));
}

void ApplyGroupBreakPercent(RateContext& context, int32_t column) {
    const DiscountGroup group = GroupAt(context, SelectDiscountGroup(context));
    context.DiscountBreakPercent[column] = ReadSingle(WholeField(group.Percent[column]));
}

void ApplyEntryDiscount(RateContext& context) {
    context.DiscountSource = kFromEntry;
    SetFlatPercent(context, WholeField(context.EntryFlatPercent));
    SetFloor(context, WholeField(context.EntryFloor));
    const float percent = ReadSingle(WholeField(context.EntryDiscountPercent));
    for (int32_t i = 0; i < DiscountColumns(context); ++i) {
        context.DiscountBreakPercent[i] = percent;
    }
}

int32_t ApplyZipDiscount(RateContext& context) {
    ShipmentKeys keys;
    keys.length = context.ZipLength[0] == '3' ? 3 : 5;
    PutZipKey(keys.origin, context.OrigZip, keys.length);
    PutZipKey(keys.destination, context.DestZip, keys.length);
    const auto& records = context.Profile.ZipDiscounts;
    const int32_t count = BoundedCount(context.Profile.ZipDiscountCount, std::size(records));
    for (int32_t i = 0; i < count; ++i) {
        if (!Matches(context, keys, records[i])) continue;
        ApplyZipRecord(context, records[i]);
        return 1;
    }
    return 0;
}

}  // namespace hundredweight
