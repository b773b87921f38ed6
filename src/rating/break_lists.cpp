#include "rating/break_lists.h"

#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/bytes.h"
#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr int32_t kPlaces = 15;
constexpr char kMinimumChargeKind = '1';

/// One entry of a list on its way there; the list's columns may lie unaligned.
struct BreakEntry {
    int32_t weight;
    int32_t amount;
    bool raised;  ///< To the first floor.
};

/// A list while it is built.
struct EntryList {
    BreakEntry entries[kPlaces];
    int32_t count = 0;

    void Add(const BreakEntry& entry) {
        if (count < kPlaces) entries[count++] = entry;
    }

    /// An exchange sort: entries of equal weight end in the order that the exchanges give.
    void SortByWeight() {
        for (int32_t p = 0; p < count; ++p) {
            for (int32_t q = p + 1; q < count; ++q) {
                if (entries[p].weight > entries[q].weight) std::swap(entries[p], entries[q]);
            }
        }
    }
};

BreakEntry Floored(int32_t weight, int32_t amount, float first_floor, float second_floor) {
    const auto value = static_cast<float>(amount);
    if (value < first_floor) return {weight, TruncateToInteger(first_floor), true};
    if (value < second_floor) return {weight, TruncateToInteger(second_floor), false};
    return {weight, amount, false};
}

void Store(BreakList& list, const EntryList& entries, std::string_view name) {
    for (int32_t j = 0; j < entries.count; ++j) {
        const BreakEntry& entry = entries.entries[j];
        list.Weights[j] = entry.weight;
        list.Amounts[j] = entry.amount;
        FillField(list.Marks[j], '\0');
        if (entry.raised) list.Marks[j][0] = '*';
        FillField(list.Labels[j], '\0');
        PutText(list.Labels[j],
                NumberText(name).Append(FormatInteger(entry.weight, 5)).Append("#>"));
    }
    list.Count = entries.count;
}

/// Whether the engine's rate table drops a weight-break entry.
bool IsDropped(const RateContext& context, int32_t entry) {
    const std::size_t at = static_cast<std::size_t>(entry) * sizeof(int32_t);
    return LoadLittleEndian<int32_t>(context.EngineRateTable + at) < 0;
}

}  // namespace

void BuildBreakLists(RateContext& context) {
    const EngineRateRecord& record = engine.EngineRateRecord;
    const float discount_floor = context.DiscountFloor;
    const float zmc_floor = context.ZmcFloor;
    const float first_floor = discount_floor != 0.0F ? discount_floor : zmc_floor;
    const float second_floor = context.ZmcMinimum;
    EntryList mc_list;
    EntryList ss_list;
    const int32_t count = BoundedCount(record.BreakEntryCount, std::size(record.BreakKinds));
    for (int32_t i = 0; i < count; ++i) {
        if (IsDropped(context, i)) continue;
        EntryList& list = record.BreakKinds[i] == kMinimumChargeKind ? mc_list : ss_list;
        list.Add(
            Floored(record.BreakWeights[i], record.BreakAmounts[i], first_floor, second_floor));
    }
    mc_list.SortByWeight();
    ss_list.SortByWeight();
    Store(context.BreakLists[0], mc_list, "MC ");
    Store(context.BreakLists[1], ss_list, "SS ");
    context.BreakLists[2].Count = ss_list.count;
    context.BreakLists[4].Count = ss_list.count;
}

}  // namespace hundredweight
