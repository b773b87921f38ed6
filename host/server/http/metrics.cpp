#include "server/http/metrics.h"

#include <fmt/format.h>

#include <iterator>
#include <nlohmann/json.hpp>

namespace cwt {
namespace {

template <class Number>
void AddLine(std::string& text, const char* name, const std::string& labels, Number value) {
    fmt::format_to(std::back_inserter(text), "hundredweight_{}{} {}\n", name, labels, value);
}

void AddHead(std::string& text, const char* name, const char* type, const char* help) {
    fmt::format_to(std::back_inserter(text),
                   "# HELP hundredweight_{0} {2}\n# TYPE hundredweight_{0} {1}\n", name, type,
                   help);
}

/// A number of the service's state.
struct StateLine {
    const char* name;
    const char* type;
    const char* help;
    const char* member;
};

constexpr StateLine kStateLines[] = {
    {"workers_lost_total", "counter", "Rating processes that were lost.", "workers_lost"},
    {"reload_failures_total", "counter", "Loads of new data that failed.", "reload_failures"},
    {"generation", "gauge", "The load of the data that is rated by.", "generation"},
    {"workers_ready", "gauge", "Rating processes that can rate.", "ready"},
    {"queue", "gauge", "Requests that wait for a rating process.", "queue"},
};

}  // namespace

void Metrics::CountRequest(const std::string& route, int status,
                           std::chrono::duration<double> time) {
    const std::lock_guard lock(mutex_);
    ++requests_[{route, status}];
    Times& times = times_[route];
    for (std::size_t i = 0; i < kBounds.size(); ++i) {
        if (time.count() <= kBounds[i]) ++times.within[i];
    }
    ++times.count;
    times.seconds += time.count();
}

void Metrics::CountShipments(const Tally& tally) {
    const std::lock_guard lock(mutex_);
    rated_ += tally.rated();
    refused_ += tally.refused();
    failed_ += tally.failed();
    const nlohmann::ordered_json counts = tally.Json();
    for (const auto& kind : counts.at("refused_by")) {
        refused_by_[kind.at("code").get<int>()] += kind.at("rows").get<std::uint64_t>();
    }
}

std::string Metrics::Text(const nlohmann::json& state, unsigned connections) const {
    const std::lock_guard lock(mutex_);
    std::string text;
    AddHead(text, "requests_total", "counter", "Requests that were answered.");
    for (const auto& [key, count] : requests_) {
        AddLine(text, "requests_total",
                fmt::format("{{route=\"{}\",status=\"{}\"}}", key.first, key.second), count);
    }
    AddHead(text, "request_seconds", "histogram", "From a request's head to its answer's end.");
    for (const auto& [route, times] : times_) {
        for (std::size_t i = 0; i < kBounds.size(); ++i) {
            AddLine(text, "request_seconds_bucket",
                    fmt::format("{{route=\"{}\",le=\"{}\"}}", route, kBounds[i]), times.within[i]);
        }
        AddLine(text, "request_seconds_bucket", fmt::format("{{route=\"{}\",le=\"+Inf\"}}", route),
                times.count);
        const std::string label = fmt::format("{{route=\"{}\"}}", route);
        AddLine(text, "request_seconds_sum", label, times.seconds);
        AddLine(text, "request_seconds_count", label, times.count);
    }
    AddHead(text, "shipments_total", "counter", "Shipments by what came of them.");
    AddLine(text, "shipments_total", "{outcome=\"rated\"}", rated_);
    AddLine(text, "shipments_total", "{outcome=\"refused\"}", refused_);
    AddLine(text, "shipments_total", "{outcome=\"failed\"}", failed_);
    AddHead(text, "refusals_total", "counter", "Refused shipments by the first refusal's code.");
    for (const auto& [code, count] : refused_by_) {
        AddLine(text, "refusals_total", fmt::format("{{code=\"{}\"}}", code), count);
    }
    for (const StateLine& line : kStateLines) {
        AddHead(text, line.name, line.type, line.help);
        AddLine(text, line.name, {}, state.value(line.member, std::uint64_t{0}));
    }
    AddHead(text, "connections", "gauge", "Connections that are open.");
    AddLine(text, "connections", {}, connections);
    return text;
}

}  // namespace cwt
