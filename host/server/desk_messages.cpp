// Requests and replies as texts with their lengths, one behind another.
#include <nlohmann/json.hpp>
#include <utility>

#include "batch/row_tables.h"
#include "server/desk.h"

namespace cwt {

std::string WriteRequest(const DeskRequest& request) {
    std::string bytes;
    AppendCell(bytes, request.route);
    AppendCell(bytes, std::to_string(request.terms.size()));
    for (const auto& [name, term] : request.terms) {
        AppendCell(bytes, name);
        AppendCell(bytes, term);
    }
    AppendCell(bytes, request.body);
    return bytes;
}

DeskRequest ReadRequest(std::string_view bytes) {
    DeskRequest request;
    request.route = TakeCell(bytes);
    for (int left = std::stoi(std::string(TakeCell(bytes))); left > 0; --left) {
        std::string name(TakeCell(bytes));
        request.terms[std::move(name)] = TakeCell(bytes);
    }
    request.body = TakeCell(bytes);
    return request;
}

std::string WriteReply(const DeskReply& reply) {
    std::string bytes;
    AppendCell(bytes, std::to_string(reply.status));
    AppendCell(bytes, reply.type);
    // An engine may put anything in its words.
    AppendCell(bytes,
               reply.tally.Json().dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
    AppendCell(bytes, reply.body);
    return bytes;
}

DeskReply ReadReply(std::string_view bytes) {
    DeskReply reply;
    reply.status = std::stoi(std::string(TakeCell(bytes)));
    reply.type = TakeCell(bytes);
    reply.tally = Tally::FromJson(nlohmann::ordered_json::parse(TakeCell(bytes)));
    reply.body = TakeCell(bytes);
    return reply;
}

}  // namespace cwt
