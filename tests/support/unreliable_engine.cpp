// The reference engine, but for origin cities that make it do what partners should not.
#include <hundredweight/engine_interface.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

#include "reference/engine/entry_points.h"

/// The entry point of the reference engine, by another name.
extern "C" int32_t HWT_CALL RateReliably(void* handle, EngineRateRecord* record, void* block);

namespace {

bool IsCity(const EngineRateRecord& record, std::string_view city) {
    return std::string_view(record.OrigCity, sizeof record.OrigCity).starts_with(city);
}

int requests = 0;  ///< By this process, two for each such row.

}  // namespace

extern "C" int32_t HWT_CALL Tolvex_RateShipment2Ex(void* handle, EngineRateRecord* record,
                                                   void* block) {
    if (IsCity(*record, "Crash")) std::raise(SIGKILL);
    if (IsCity(*record, "Exit")) std::exit(0);
    if (IsCity(*record, "Unwind")) pthread_exit(nullptr);
    if (IsCity(*record, "Wander") && chdir("/") != 0) return -1;
    if (IsCity(*record, "Hang")) sleep(3600);
    // Not its fault: it goes well with the next process.
    if (IsCity(*record, "Tired") && ++requests > 3) std::raise(SIGKILL);
    return RateReliably(handle, record, block);
}
