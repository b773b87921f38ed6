// The engine's effective tables, copied into the record when the engine starts.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Rebuilds EfcTable from a running engine. Result: 1, or 0 with code 140 or 141.
int32_t BuildEfcTable(RateContext& context, void* handle,
                      Tolvex_GetEffectiveTableSizeExFunction get_size,
                      Tolvex_GetEffectiveTableExFunction get_record);

}  // namespace hundredweight
