// The base-rate engine of the process: its entry points, its handle and the blocks exchanged.
#pragma once

#include <hundredweight/engine_interface.h>

#include "frame/block.h"

namespace hundredweight {

/// The engine's functions; null until bound.
struct EngineEntryPoints {
    Tolvex_InitializeTolvexExFunction Tolvex_InitializeTolvexEx;
    Tolvex_Set_TolvexdataExFunction Tolvex_Set_TolvexdataEx;
    Tolvex_GetTablesExFunction Tolvex_GetTablesEx;
    Tolvex_disp_verExFunction Tolvex_disp_verEx;
    Tolvex_EndTolvexExFunction Tolvex_EndTolvexEx;
    Tolvex_RateShipment2ExFunction Tolvex_RateShipment2Ex;
    Tolvex_GetEffectiveTableExFunction Tolvex_GetEffectiveTableEx;
    Tolvex_GetEffectiveTableSizeExFunction Tolvex_GetEffectiveTableSizeEx;
    Tolvex_GetErrorStringExFunction Tolvex_GetErrorStringEx;
    Tolvex_GetStateExFunction Tolvex_GetStateEx;
};

/// All records of a process share one engine; nothing here is locked.
struct Engine {
    EngineEntryPoints entry_points{};
    void* EngineHandle = nullptr;  ///< Null when no engine instance is running.
    ::EngineRateRecord EngineRateRecord{};
    Block<::EngineResultBlock> EngineResultBlock;
    Block<::EngineListBlock> EngineListBlock;
    ::EngineVersionBlock EngineVersionBlock{};
};
extern Engine engine;

}  // namespace hundredweight
