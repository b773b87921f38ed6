#include "server/service_log.h"

#include <fmt/core.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <mutex>

#include "platform/system.h"

namespace cwt {
namespace {

/// A moment in UTC, "2026-11-23T16:57:16.962Z".
std::string TimeText(std::chrono::system_clock::time_point moment) {
    using std::chrono::floor, std::chrono::milliseconds, std::chrono::seconds;
    const auto whole = floor<seconds>(moment);
    const std::time_t time = std::chrono::system_clock::to_time_t(whole);
    std::tm parts = {};
    gmtime_r(&time, &parts);
    char text[sizeof "2026-11-23T16:57:16"];
    std::strftime(text, sizeof text, "%FT%T", &parts);
    return fmt::format("{}.{:03}Z", text, floor<milliseconds>(moment - whole).count());
}

}  // namespace

void LogEvent(const char* event, const nlohmann::ordered_json& told) {
    // A log that nobody reads must not hold up the service.
    static std::mutex turn;
    static std::uint64_t dropped = 0;
    const std::lock_guard lock(turn);
    nlohmann::ordered_json line = {{"time", TimeText(std::chrono::system_clock::now())},
                                   {"event", event}};
    if (!told.is_null()) line.update(told);
    if (dropped > 0) line["lines_dropped_before"] = dropped;
    const std::string text = line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    dropped = WriteToStandardError(text + '\n') ? 0 : dropped + 1;
}

}  // namespace cwt
