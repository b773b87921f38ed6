// The reference engine, which keeps the last request that it was sent.
#include <hundredweight/engine_interface.h>

#include <cstring>

#include "reference/engine/entry_points.h"

/// The entry point of the reference engine, by another name.
extern "C" int32_t HWT_CALL RateInFull(void* handle, EngineRateRecord* record, void* block);

namespace {

EngineRateRecord last_request;

}  // namespace

extern "C" int32_t HWT_CALL Tolvex_RateShipment2Ex(void* handle, EngineRateRecord* record,
                                                   void* block) {
    std::memcpy(&last_request, record, sizeof last_request);
    return RateInFull(handle, record, block);
}

extern "C" HWT_API const EngineRateRecord* LastRequest() {
    return &last_request;
}
