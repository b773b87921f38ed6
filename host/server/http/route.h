// The addresses of a rating service.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cwt {

enum class RouteKind {
    kLookUp,    ///< Asks a desk by what stands in the address.
    kShipment,  ///< Asks a desk with a shipment in the body.
    kBatch,
    kSet,
    kHealth,
    kReadiness,
    kMetrics,
    kOpenApi,
    kPage,
};

struct Route {
    std::string_view path;  ///< "{code}" at its end stands for anything that is a part of a path.
    RouteKind kind;
    const char* desk = "";                       ///< The desk's name of it.
    std::array<std::string_view, 2> terms = {};  ///< What a query may hold.

    bool takes_body() const { return kind == RouteKind::kShipment || kind == RouteKind::kBatch; }
    const char* methods() const { return takes_body() ? "POST" : "GET, HEAD"; }

    /// Whether it is open to who has no token.
    bool is_public() const {
        return kind == RouteKind::kPage || kind == RouteKind::kHealth ||
               kind == RouteKind::kReadiness;
    }

    /// The fields that an answer with this status has beside others.
    std::vector<std::pair<std::string, std::string>> FieldsOf(int status) const;

    /// The name of what "{...}" stands for, and its text in a path; empty when there is none.
    std::string_view part_name() const;
    std::string_view PartOf(std::string_view path_asked) const;
};

/// The route of a path; null when there is none. Pages are not among them.
const Route* FindRoute(std::string_view path);

}  // namespace cwt
