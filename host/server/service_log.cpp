#include "server/service_log.h"

#include <fmt/chrono.h>

#include <chrono>

#include "platform/system.h"

namespace cwt {

void LogEvent(const char* event, const nlohmann::ordered_json& told) {
    using std::chrono::floor, std::chrono::milliseconds, std::chrono::seconds;
    const auto now = std::chrono::system_clock::now();
    const auto whole = floor<seconds>(now);
    nlohmann::ordered_json line = {
        {"time", fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                             fmt::gmtime(std::chrono::system_clock::to_time_t(whole)),
                             floor<milliseconds>(now - whole).count())},
        {"event", event}};
    if (!told.is_null()) line.update(told);
    WriteToStandardError(line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) +
                         "\n");
}

}  // namespace cwt
