// What a rating service counts, as Prometheus reads it.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <utility>

#include "batch/tally.h"

namespace cwt {

class Metrics {
 public:
    void CountRequest(const std::string& route, int status, std::chrono::duration<double> time);
    void CountShipments(const Tally& tally);

    /// All of it, with the state of the service.
    std::string Text(const nlohmann::json& state, unsigned connections) const;

 private:
    static constexpr std::array kBounds = {0.001, 0.0025, 0.005, 0.01, 0.025, 0.05,
                                           0.1,   0.25,   0.5,   1.0,  2.5,   10.0};

    struct Times {
        std::array<std::uint64_t, kBounds.size()> within = {};  ///< Requests by bound.
        std::uint64_t count = 0;
        double seconds = 0;
    };

    mutable std::mutex mutex_;
    std::map<std::pair<std::string, int>, std::uint64_t> requests_;  ///< By route and status.
    std::map<std::string, Times> times_;                             ///< By route.
    std::uint64_t rated_ = 0, refused_ = 0, failed_ = 0;
    std::map<int, std::uint64_t> refused_by_;  ///< By code.
};

}  // namespace cwt
