/** The engine's ten entry points; engine_interface.h says what each takes and returns. Every one
 *  survives null arguments and handles that it did not give out or that have ended. */
#pragma once

#include <hundredweight/engine_interface.h>

extern "C" {
HWT_API void* HWT_CALL Tolvex_InitializeTolvexEx(const char* data_directory);
HWT_API int32_t HWT_CALL Tolvex_Set_TolvexdataEx(void* handle, const char* data_directory);
HWT_API int32_t HWT_CALL Tolvex_GetTablesEx(void* handle, EngineTablesRecord* record);
HWT_API int32_t HWT_CALL Tolvex_disp_verEx(void* handle, EngineVersionBlock* block);
HWT_API int32_t HWT_CALL Tolvex_EndTolvexEx(void* handle);
HWT_API int32_t HWT_CALL Tolvex_RateShipment2Ex(void* handle, EngineRateRecord* record,
                                                void* block);
HWT_API EfcRecord* HWT_CALL Tolvex_GetEffectiveTableEx(void* handle, EfcRecord* buffer,
                                                       int32_t index);
HWT_API int32_t HWT_CALL Tolvex_GetEffectiveTableSizeEx(void* handle);
HWT_API char* HWT_CALL Tolvex_GetErrorStringEx(void* handle, char* buffer);
HWT_API int32_t HWT_CALL Tolvex_GetStateEx(void* handle, char* state, const char* postal_code);
}
