#include "server/http/route.h"

namespace cwt {
namespace {

using enum RouteKind;

const Route kRoutes[] = {
    {"/v1/rate", kShipment, "rate", {"explain"}},
    {"/v1/check", kShipment, "check"},
    {"/v1/curve", kShipment, "curve", {"from", "to"}},
    {"/v1/batch", kBatch, "batch", {"pass"}},
    {"/v1/set", kSet},
    {"/v1/profiles", kLookUp, "profiles"},
    {"/v1/profiles/{name}", kLookUp, "profile"},
    {"/v1/states/{code}", kLookUp, "state"},
    {"/v1/cities/{code}", kLookUp, "cities"},
    {"/v1/classes", kLookUp, "classes", {"tariff"}},
    {"/healthz", kHealth},
    {"/readyz", kReadiness},
    {"/metrics", kMetrics},
    {"/openapi.json", kOpenApi},
};

}  // namespace

std::vector<std::pair<std::string, std::string>> Route::FieldsOf(int status) const {
    constexpr int kNoToken = 401;
    constexpr int kNoSuchMethod = 405;
    constexpr int kUnavailable = 503;
    if (status == kNoToken) return {{"WWW-Authenticate", "Bearer"}};
    if (status == kNoSuchMethod) return {{"Allow", methods()}};
    if (status == kUnavailable) return {{"Retry-After", "1"}};
    return {};
}

std::string_view Route::part_name() const {
    const std::size_t begin = path.find('{');
    return begin == path.npos ? std::string_view()
                              : path.substr(begin + 1, path.size() - begin - 2);
}

std::string_view Route::PartOf(std::string_view path_asked) const {
    const std::size_t begin = path.find('{');
    if (begin == path.npos || !path_asked.starts_with(path.substr(0, begin))) return {};
    const std::string_view part = path_asked.substr(begin);
    return part.find('/') == part.npos ? part : std::string_view();
}

const Route* FindRoute(std::string_view path) {
    for (const Route& route : kRoutes) {
        if (route.path == path || !route.PartOf(path).empty()) return &route;
    }
    return nullptr;
}

}  // namespace cwt
