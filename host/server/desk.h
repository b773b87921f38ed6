// The desk at which a rating process answers one request after another from its session.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "batch/block.h"
#include "batch/tally.h"
#include "server/problem.h"
#include "session/session.h"

namespace cwt {

/// Routes and their terms:
///   rate     a shipment in the body; "explain" = "1" for the reasons too
///   check    a shipment in the body
///   curve    a shipment in the body; "from" and "to", pounds
///   state, cities    "code", a postal code
///   classes  "tariff"; left out, the first that the engine has
///   profiles, and profile with "name"
///   batch    as BatchRequest makes it
struct DeskRequest {
    std::string route;
    std::map<std::string, std::string> terms;
    std::string body;
};

struct DeskReply {
    int status = 200;
    std::string type = "application/json";
    std::string body;
    Tally tally;  ///< Of the shipments that were rated or refused.
};

/// How the rows of a batch are read and written: "ndjson" or "csv".
struct BatchForms {
    std::string from, to;
    std::string header;               ///< Of a CSV input.
    std::vector<std::string> passed;  ///< Its columns that nobody reads.
};

/// The request to rate a block of rows, answered by the rows in their form without a header.
DeskRequest BatchRequest(Block block, const BatchForms& forms);

/// Answers a request from the record as the load left it. Throws Broken when a partner or the data
/// are.
DeskReply AnswerRequest(Session& session, const DeskRequest& request);

/// A problem as the reply.
DeskReply ProblemReply(ProblemKind kind, const std::string& detail,
                       const ProblemMembers& members = {});

/// Requests and replies as bytes between processes. Throws std::logic_error when they are cut.
std::string WriteRequest(const DeskRequest& request);
DeskRequest ReadRequest(std::string_view bytes);
std::string WriteReply(const DeskReply& reply);
DeskReply ReadReply(std::string_view bytes);

}  // namespace cwt
