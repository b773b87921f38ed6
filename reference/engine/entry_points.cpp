#include "reference/engine/entry_points.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "reference/engine/alternatives.h"
#include "reference/engine/answer.h"
#include "reference/engine/rate_base.h"
#include "reference/engine/rating.h"
#include "reference/text/columns.h"

namespace {

using namespace hundredweight::reference;

// A caller finds the entry points by name, so nothing else checks their arguments.
static_assert(
    std::is_same_v<decltype(&Tolvex_InitializeTolvexEx), Tolvex_InitializeTolvexExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_Set_TolvexdataEx), Tolvex_Set_TolvexdataExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_GetTablesEx), Tolvex_GetTablesExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_disp_verEx), Tolvex_disp_verExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_EndTolvexEx), Tolvex_EndTolvexExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_RateShipment2Ex), Tolvex_RateShipment2ExFunction>);
static_assert(
    std::is_same_v<decltype(&Tolvex_GetEffectiveTableEx), Tolvex_GetEffectiveTableExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_GetEffectiveTableSizeEx),
                             Tolvex_GetEffectiveTableSizeExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_GetErrorStringEx), Tolvex_GetErrorStringExFunction>);
static_assert(std::is_same_v<decltype(&Tolvex_GetStateEx), Tolvex_GetStateExFunction>);

/// What a handle stands for.
struct Instance {
    std::optional<RateBase> rate_base;  ///< Without one nothing is rated.
    std::string told;                   ///< What is wrong with the data, as it was said last.

    bool Load(const char* data_directory) {
        rate_base.reset();
        try {
            if (data_directory) rate_base = ReadRateBase(data_directory);
        } catch (const std::exception& error) {
            // A start and the naming of the same directory tell of a fault once.
            if (told != error.what()) std::fprintf(stderr, "tolvex: %s\n", error.what());
            told = error.what();
        }
        return rate_base.has_value();
    }
};

/// The handles given out, so that any other is known for what it is.
std::vector<std::unique_ptr<Instance>> instances;

auto FindInstance(const void* handle) {
    return std::ranges::find(instances, handle, &std::unique_ptr<Instance>::get);
}

/// The action's result for a running instance; the failure for any other handle, and when memory
/// runs out.
template <typename Result, typename Action>
Result WithInstance(const void* handle, Result failure, Action action) noexcept {
    try {
        const auto found = FindInstance(handle);
        return found == instances.end() ? failure : action(**found);
    } catch (...) {
        return failure;
    }
}

template <typename Result, typename Action>
Result WithRateBase(const void* handle, Result failure, Action action) noexcept {
    return WithInstance(handle, failure, [&](const Instance& instance) {
        return instance.rate_base ? action(*instance.rate_base) : failure;
    });
}

void Rate(const RateBase& base, EngineRateRecord& record, EngineResultBlock& block) {
    const RateRequest request = ReadRequest(record);
    const Rating rating = RateShipment(base, request);
    WriteAnswer(record, base, request, rating);
    block.NoAlternatives = CountAlternatives(rating.points, rating.status) == 0;
    block.Verdict = 0;
}

}  // namespace

void* HWT_CALL Tolvex_InitializeTolvexEx(const char* data_directory) {
    try {
        auto instance = std::make_unique<Instance>();
        instance->Load(data_directory);
        return instances.emplace_back(std::move(instance)).get();
    } catch (...) {
        return nullptr;
    }
}

int32_t HWT_CALL Tolvex_Set_TolvexdataEx(void* handle, const char* data_directory) {
    return WithInstance(handle, 0,
                        [&](Instance& instance) -> int { return instance.Load(data_directory); });
}

int32_t HWT_CALL Tolvex_GetTablesEx(void* handle, EngineTablesRecord* record) {
    if (!record) return 0;
    return WithRateBase(handle, 0, [&](const RateBase& base) {
        const Tariff* tariff = base.FindTariff(ColumnText(record->TariffName));
        if (!tariff) return 0;
        WriteTables(record->Tables, *tariff);
        return 1;
    });
}

int32_t HWT_CALL Tolvex_disp_verEx(void* handle, EngineVersionBlock* block) {
    if (!block) return 0;
    return WithInstance(handle, 0, [&](const Instance&) {
        WriteVersion(*block);
        return 1;
    });
}

int32_t HWT_CALL Tolvex_EndTolvexEx(void* handle) {
    const auto found = FindInstance(handle);
    if (found == instances.end()) return 1;
    instances.erase(found);
    return 0;
}

int32_t HWT_CALL Tolvex_RateShipment2Ex(void* handle, EngineRateRecord* record, void* block) {
    if (!record || !block) return 0;
    // Both blocks begin with the size of what follows their 16 bytes, which tells them apart.
    std::int32_t capacity = 0;
    std::memcpy(&capacity, block, sizeof capacity);
    if (capacity == sizeof(EngineResultBlock::Data)) {
        auto& result = *static_cast<EngineResultBlock*>(block);
        result.Verdict = -1;
        result.NoAlternatives = 1;
        return WithRateBase(handle, 0, [&](const RateBase& base) {
            Rate(base, *record, result);
            return 1;
        });
    }
    if (capacity == sizeof(EngineListBlock::Entries)) {
        auto& list = *static_cast<EngineListBlock*>(block);
        list.Count = -1;
        return WithRateBase(handle, 0, [&](const RateBase& base) {
            ListAlternatives(base, *record, list);
            return 1;
        });
    }
    return 0;
}

EfcRecord* HWT_CALL Tolvex_GetEffectiveTableEx(void* handle, EfcRecord* buffer, int32_t index) {
    EfcRecord* const none = nullptr;
    if (!buffer || index < 0) return none;
    return WithRateBase(handle, none, [&](const RateBase& base) {
        const auto place = static_cast<std::size_t>(index);
        if (place >= base.Tariffs().size()) return none;
        WriteEffectiveTable(*buffer, base.Tariffs()[place]);
        return buffer;
    });
}

int32_t HWT_CALL Tolvex_GetEffectiveTableSizeEx(void* handle) {
    return WithRateBase(handle, 0, [](const RateBase& base) {
        return static_cast<std::int32_t>(base.Tariffs().size());
    });
}

char* HWT_CALL Tolvex_GetErrorStringEx(void* handle, char* buffer) {
    char* const none = nullptr;
    if (!buffer) return none;
    return WithInstance(handle, none, [&](const Instance&) {
        const std::string text = StatusText(ColumnText({buffer, 4}));
        if (text.empty()) return none;
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return buffer;
    });
}

int32_t HWT_CALL Tolvex_GetStateEx(void* handle, char* state, const char* postal_code) {
    if (!state || !postal_code) return 0;
    return WithRateBase(handle, 0, [&](const RateBase& base) {
        const auto found = base.states.Find(PostalPrefix({postal_code, strnlen(postal_code, 7)}));
        if (found.empty()) return 0;
        std::ranges::copy(found, state);
        return 1;
    });
}
