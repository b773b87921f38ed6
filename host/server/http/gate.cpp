#include "server/http/gate.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/letters.h"

namespace cwt {
namespace {

using enum ProblemKind;

/// Takes as long for any text of the same length.
bool IsSame(std::string_view text, std::string_view secret) {
    unsigned differences = text.size() == secret.size() ? 0 : 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        differences |= static_cast<unsigned char>(text[i]) ^
                       static_cast<unsigned char>(secret[i % secret.size()]);
    }
    return differences == 0;
}

std::string_view WithoutPort(std::string_view host) {
    const std::size_t bracket = host.find(']');
    const std::size_t colon = host.find(':', bracket == host.npos ? 0 : bracket);
    return host.substr(0, colon);
}

void RequireOrigin(const Head& head) {
    const std::string origin = LowerCase(head.Find("origin"));
    const std::string host = LowerCase(head.Find("host"));
    const bool is_own = origin == "http://" + host || origin == "https://" + host;
    if (is_own || (origin.empty() && head.Find("sec-fetch-site") != "cross-site")) return;
    throw BadRequest(kForbidden, "Pages of other hosts may not ask this service");
}

void RequireType(const Head& head, const Route& route) {
    constexpr std::string_view kShipmentTypes[] = {"", "application/json",
                                                   "application/x-www-form-urlencoded"};
    constexpr std::string_view kRowTypes[] = {"", "application/x-ndjson", "text/csv"};
    const std::string type = TypeOfBody(head);
    const bool is_taken = route.kind == RouteKind::kBatch
                              ? std::ranges::find(kRowTypes, type) != std::end(kRowTypes)
                              : std::ranges::find(kShipmentTypes, type) != std::end(kShipmentTypes);
    if (is_taken) return;
    throw BadRequest(kWrongType, route.kind == RouteKind::kBatch
                                     ? "Rows are application/x-ndjson or text/csv, which "
                                       "Content-Type is to say"
                                     : "A shipment is application/json");
}

}  // namespace

std::string TypeOfBody(const Head& head) {
    const std::string text = LowerCase(head.Find("content-type"));
    const std::size_t end = text.find_first_of("; \t");
    const std::size_t charset = text.find("charset=");
    if (charset != text.npos && text.find("utf-8", charset) == text.npos) {
        throw BadRequest(kWrongType, "Texts are UTF-8 here");
    }
    return text.substr(0, end);
}

Gate::Gate(const Address& address, std::string token)
    : host_(LowerCase(address.host)),
      token_(std::move(token)),
      is_open_(token_.empty() && address.is_loopback()) {}

/// A page of elsewhere whose name was made to lead to this machine knows this machine by that name.
void Gate::RequireHost(const Head& head) const {
    const std::string written = LowerCase(head.Find("host"));
    if (written.empty()) return;  // Of HTTP/1.0, which no browser speaks.
    const std::string_view host = WithoutPort(written);
    const std::string own = host_.find(':') == host_.npos ? host_ : "[" + host_ + "]";
    for (const std::string_view known :
         {std::string_view("localhost"), std::string_view("127.0.0.1"), std::string_view("[::1]"),
          std::string_view(own)}) {
        if (host == known) return;
    }
    throw BadRequest(kWrongHost, "This service is no host of that name");
}

void Gate::RequireToken(const Head& head) const {
    constexpr std::string_view kScheme = "bearer ";
    const std::string_view written = head.Find("authorization");
    const bool is_bearer =
        written.size() > kScheme.size() && LowerCase(written.substr(0, kScheme.size())) == kScheme;
    if (is_bearer && IsSame(written.substr(kScheme.size()), token_)) return;
    throw BadRequest(kUnauthorized, "A token is wanted: Authorization: Bearer TOKEN");
}

void Gate::RequireAllowed(const Head& head, const Route& route) const {
    if (is_open_) RequireHost(head);
    if (route.kind != RouteKind::kPage) RequireOrigin(head);
    if (!token_.empty() && !route.is_public()) RequireToken(head);
    const std::string_view methods = route.methods();
    if (methods != head.method &&
        (route.takes_body() || (head.method != "GET" && head.method != "HEAD"))) {
        throw BadRequest(kWrongMethod, fmt::format("{} takes {}", route.path, methods));
    }
    if (route.takes_body()) RequireType(head, route);
}

}  // namespace cwt
