// What went wrong with a request, as a problem document (RFC 9457).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shipment/refusal.h"

namespace cwt {

/// What can be wrong. The type of a document is "urn:hundredweight:problem:" and the kind's name.
enum class ProblemKind {
    kBadRequest,
    kNotAShipment,
    kUnauthorized,
    kForbidden,
    kNotFound,
    kUnknownProfile,
    kWrongMethod,
    kNotAcceptable,
    kTimeout,
    kTooLarge,
    kWrongType,
    kWrongHost,
    kRefused,
    kTooManyRequests,
    kHeadersTooLarge,
    kBrokenData,
    kPartnerEnded,
    kBusy,
    kDataChanged,
    kNotReady,
    kStopping,
    kPartnerLate,
};

inline constexpr const char* kProblemType = "application/problem+json";

/// The HTTP status of a kind.
int StatusOf(ProblemKind kind);

/// The name of a kind: "not-a-shipment".
const char* NameOf(ProblemKind kind);

/// What a document says besides; what is not there is left out.
struct ProblemMembers {
    std::optional<std::string> id = {};  ///< The shipment's; null when it has none.
    Refusals refusals = {};
    std::vector<std::string> alternatives = {};  ///< What was most likely meant.
};

/// The document, with an LF behind it.
std::string ProblemDocument(ProblemKind kind, const std::string& detail,
                            const ProblemMembers& members = {});

}  // namespace cwt
