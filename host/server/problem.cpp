#include "server/problem.h"

#include <fmt/core.h>

#include <iterator>

#include "text/json_writer.h"

namespace cwt {
namespace {

struct Kind {
    ProblemKind kind;
    int status;
    const char* name;
    const char* title;
};

using enum ProblemKind;

constexpr Kind kKinds[] = {
    {kBadRequest, 400, "bad-request", "The request cannot be read"},
    {kNotAShipment, 400, "not-a-shipment", "The body is no shipment"},
    {kUnauthorized, 401, "unauthorized", "The request carries no valid token"},
    {kForbidden, 403, "forbidden", "The request comes from a foreign page"},
    {kNotFound, 404, "not-found", "There is nothing at this address"},
    {kUnknownProfile, 404, "unknown-profile", "There is no profile of this name"},
    {kWrongMethod, 405, "wrong-method", "The address does not take this method"},
    {kNotAcceptable, 406, "not-acceptable", "There is no answer in a form that is accepted"},
    {kTimeout, 408, "timeout", "The request came too slowly"},
    {kTooLarge, 413, "too-large", "The body is too large"},
    {kWrongType, 415, "wrong-type", "The body is of a type that is not taken here"},
    {kWrongHost, 421, "wrong-host", "The request is for another host"},
    {kRefused, 422, "refused", "What was asked is refused"},
    {kTooManyRequests, 429, "too-many-requests", "There are too many requests"},
    {kHeadersTooLarge, 431, "headers-too-large", "The request's headers are too large"},
    {kBrokenData, 502, "broken-data", "The data or a partner library are broken"},
    {kPartnerEnded, 502, "partner-ended", "A partner library ended the rating process"},
    {kBusy, 503, "busy", "The queue is full"},
    {kDataChanged, 503, "data-changed", "The data changed during the rating"},
    {kNotReady, 503, "not-ready", "The service is not ready"},
    {kStopping, 503, "stopping", "The service is about to end"},
    {kPartnerLate, 504, "partner-late", "A partner library did not answer in time"},
};

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
        if (kKinds[i].kind != static_cast<ProblemKind>(i)) return false;
    }
    return true;
}
static_assert(IsInOrder());

const Kind& EntryOf(ProblemKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace

int StatusOf(ProblemKind kind) {
    return EntryOf(kind).status;
}

const char* NameOf(ProblemKind kind) {
    return EntryOf(kind).name;
}

std::string ProblemDocument(ProblemKind kind, const std::string& detail,
                            const ProblemMembers& members) {
    const Kind& entry = EntryOf(kind);
    std::string text;
    JsonWriter json(text, JsonWriter::kIndented);
    json.Object([&] {
        json.Key("type").Text(fmt::format("urn:hundredweight:problem:{}", entry.name));
        json.Key("title").Text(entry.title);
        json.Key("status").Number(entry.status);
        json.Key("detail").Text(detail);
        if (members.id) json.Key("id").TextOrNull(*members.id);
        if (!members.refusals.empty()) WriteJson(json.Key("refusals"), members.refusals);
        if (members.alternatives.empty()) return;
        json.Key("alternatives").Array([&] {
            for (const std::string& alternative : members.alternatives) json.Text(alternative);
        });
    });
    return text + '\n';
}

}  // namespace cwt
