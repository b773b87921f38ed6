// Binding, start and end of the base-rate engine.
#include <hundredweight/exports.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "engine/effective_tables.h"
#include "engine/engine.h"
#include "frame/entry_points.h"
#include "frame/failure.h"
#include "frame/text.h"

namespace hundredweight {

Engine engine;

namespace {

constexpr int32_t kNoResultBlock = 114;
constexpr int32_t kNoListBlock = 113;

#define HWT_ENTRY_POINT(name, code) \
    { #name, code, offsetof(EngineEntryPoints, name) }

/// In the order in which they are looked up.
constexpr EntryPoint kEntryPoints[] = {
    HWT_ENTRY_POINT(Tolvex_GetStateEx, 400),
    HWT_ENTRY_POINT(Tolvex_GetErrorStringEx, 401),
    HWT_ENTRY_POINT(Tolvex_InitializeTolvexEx, 402),
    HWT_ENTRY_POINT(Tolvex_Set_TolvexdataEx, 403),
    HWT_ENTRY_POINT(Tolvex_GetEffectiveTableEx, 404),
    HWT_ENTRY_POINT(Tolvex_GetEffectiveTableSizeEx, 405),
    HWT_ENTRY_POINT(Tolvex_GetTablesEx, 406),
    HWT_ENTRY_POINT(Tolvex_RateShipment2Ex, 407),
    HWT_ENTRY_POINT(Tolvex_disp_verEx, 408),
    HWT_ENTRY_POINT(Tolvex_EndTolvexEx, 409),
};
static_assert(std::size(kEntryPoints) * sizeof(void*) == sizeof(EngineEntryPoints));

bool IsBound(const EntryPoint& entry_point) {
    void* function = nullptr;
    std::memcpy(&function, reinterpret_cast<const char*>(&engine.entry_points) + entry_point.offset,
                sizeof function);
    return function != nullptr;
}

/// Allocates an exchange block and tells the engine the capacity of what follows its header.
template <class ExchangeBlock>
bool AllocateExchangeBlock(Block<ExchangeBlock>& block, int32_t capacity) {
    block = AllocateBlock<ExchangeBlock>(sizeof(ExchangeBlock));
    if (block) block->Capacity = capacity;
    return block != nullptr;
}

/// Back to the bound state.
void ForgetInstance() {
    engine.EngineHandle = nullptr;
    engine.EngineResultBlock.reset();
    engine.EngineListBlock.reset();
}

/// Copies a version text, which may run on into its neighbours up to a zero byte, without
/// terminator and no further than the field's room.
template <std::size_t Size>
void CopyVersionText(char (&field)[Size], std::size_t position, std::size_t block_offset) {
    const char* const block = reinterpret_cast<const char*>(&engine.EngineVersionBlock);
    const std::string_view text =
        TerminatedText(block + block_offset, sizeof engine.EngineVersionBlock - block_offset);
    std::memcpy(field + position, text.data(), std::min(text.size(), Size - position));
}

void CopyVersionTexts(RateContext& context) {
    constexpr std::size_t kSecondText = 3;  // Two texts share a field, the first 3 wide.
    CopyVersionText(context.EngineVersionA, 0, offsetof(EngineVersionBlock, TextA));
    CopyVersionText(context.EngineVersionB, 0, offsetof(EngineVersionBlock, TextB));
    CopyVersionText(context.EngineVersionB, kSecondText, offsetof(EngineVersionBlock, TextC));
    CopyVersionText(context.EngineVersionD, 0, offsetof(EngineVersionBlock, TextF));
    CopyVersionText(context.EngineVersionC, 0, offsetof(EngineVersionBlock, TextD));
    CopyVersionText(context.EngineVersionC, kSecondText, offsetof(EngineVersionBlock, TextE));
}

}  // namespace
}  // namespace hundredweight

using namespace hundredweight;

int32_t HWT_CALL GetTolvexAddresses(RateContext* context, int32_t /*reserved*/) {
    engine.EngineHandle = nullptr;
    const int32_t code = BindEntryPoints(context->EngineModule, kEntryPoints, &engine.entry_points);
    return code == 0 ? 1 : Fail(*context, code);
}

int32_t HWT_CALL InitializeTolvexdll(RateContext* context) {
    if (engine.EngineHandle != nullptr) return 1;
    if (context->UseEngine == 0) return 1;
    if (!std::all_of(std::begin(kEntryPoints), std::end(kEntryPoints), IsBound)) return 0;

    const EngineEntryPoints& call = engine.entry_points;
    engine.EngineHandle = call.Tolvex_InitializeTolvexEx(context->DataDir);
    call.Tolvex_Set_TolvexdataEx(engine.EngineHandle, context->DataDir);
    std::memset(&engine.EngineRateRecord, ' ', sizeof engine.EngineRateRecord);
    // A failure leaves its code behind and does not stop the start.
    BuildEfcTable(*context, engine.EngineHandle, call.Tolvex_GetEffectiveTableSizeEx,
                  call.Tolvex_GetEffectiveTableEx);
    if (!AllocateExchangeBlock(engine.EngineResultBlock, sizeof(EngineResultBlock::Data))) {
        return Fail(*context, kNoResultBlock);
    }
    if (!AllocateExchangeBlock(engine.EngineListBlock, sizeof(EngineListBlock::Entries))) {
        return Fail(*context, kNoListBlock);
    }
    call.Tolvex_disp_verEx(engine.EngineHandle, &engine.EngineVersionBlock);
    CopyVersionTexts(*context);
    return 1;
}

int32_t HWT_CALL EndTolvexdll(RateContext* context) {
    if (engine.EngineHandle == nullptr) return 1;
    if (context->UseEngine == 0) return 1;
    void* const handle = engine.EngineHandle;
    ForgetInstance();
    return engine.entry_points.Tolvex_EndTolvexEx(handle) == 0 ? 1 : 0;
}
