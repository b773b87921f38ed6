// Files that a look-up may keep, and what it is to find in them.
#pragma once

#include <chrono>
#include <thread>

#include "frame/bytes.h"
#include "rating/zmc_lookup.h"
#include "support/failing_disk.h"
#include "support/failing_system.h"
#include "support/table.h"

namespace hundredweight {

/// Lets the library's clock run ahead of the system's, which gives files their times.
struct ClockAhead {
    explicit ClockAhead(int64_t seconds) { seconds_ahead = seconds; }
    ~ClockAhead() { seconds_ahead = 0; }
};

/// Long enough for a file that is changed now to get another time than before.
inline void LetTheClockTick() {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

/// A minimum charge between all points at all rate codes.
inline std::string ChargeBytes(float minimum, const std::string& ranges = "") {
    constexpr const char* kAll = "-00000zzzzz00000zzzzz000000zzzzzz";
    std::string record = Padded(ranges.empty() ? kAll : ranges, 41);
    StoreLittleEndian(&record[33], minimum);
    return record;
}

/// The minimum that the look-up finds, or "none".
inline std::string MinimumFound(RateContext& context) {
    PutText(context.OrigZip, "10000");
    PutText(context.DestZip, "20000");
    PutText(context.RateCode, "001234");
    context.ZmcCount = 2;
    context.ZmcMinimum = 0;
    LookupZmc(context);
    return context.ZmcMinimum > 0 ? Joined(+context.ZmcMinimum) : "none";
}

}  // namespace hundredweight
