// What a connection answers to a request that was let in, but a batch.
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "server/http/connection.h"
#include "server/http/documents.h"
#include "server/http/security_fields.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

using enum ProblemKind;

/// The parts of an address that a desk wants to know. Throws BadRequest for a query that the route
/// does not have.
std::map<std::string, std::string> TermsOf(const httplib::Request& request, const Route& route) {
    std::map<std::string, std::string> terms;
    for (const auto& [name, value] : request.params) {
        if (name.empty() || std::ranges::find(route.terms, name) == route.terms.end()) {
            throw BadRequest(kBadRequest, fmt::format("{} has no query {}", route.path, name));
        }
        if (!terms.emplace(name, value).second && route.kind != RouteKind::kBatch) {
            throw BadRequest(kBadRequest, fmt::format("The query has {} twice", name));
        }
    }
    if (const auto name = route.part_name(); !name.empty()) {
        terms[std::string(name)] = request.path.substr(route.path.find('{'));
    }
    return terms;
}

}  // namespace

httplib::Server::HandlerResponse Connection::AnswerReading(const httplib::Request& request,
                                                           httplib::Response& response) {
    const auto answer = [&](const std::string& text, const char* type) {
        response.status = 200;
        response.set_content(text, type);
        response.set_header(kCacheField, "no-store");
    };
    try {
        switch (route_->kind) {
            case RouteKind::kShipment:
            case RouteKind::kBatch:
                return HandlerResponse::Unhandled;
            case RouteKind::kLookUp:
                AnswerDesk(request, {}, response);
                break;
            case RouteKind::kSet:
                if (const std::string set = front_.line.set(); set.empty()) {
                    AnswerProblem(kNotReady, "The set has not been inspected", response);
                } else {
                    answer(set, "application/json");
                }
                break;
            case RouteKind::kHealth:
                answer("ok\n", "text/plain");
                break;
            case RouteKind::kReadiness:
                AnswerReadiness(response);
                break;
            case RouteKind::kMetrics:
                answer(front_.metrics.Text(front_.line.state(), front_.connections),
                       "text/plain; version=0.0.4");
                break;
            case RouteKind::kOpenApi:
                answer(front_.open_api, "application/json");
                break;
            case RouteKind::kPage:
                AnswerPage(response);
        }
    } catch (const BadRequest& problem) {
        AnswerProblem(problem.kind, problem.what(), response);
    }
    return HandlerResponse::Handled;
}

void Connection::AnswerPage(httplib::Response& response) {
    constexpr int kNotModified = 304;
    const std::string tag = TagOf(*page_);
    response.set_header(kCacheField, "no-cache");
    response.set_header("ETag", tag);
    if (head_->Find("if-none-match") == tag) {
        response.status = kNotModified;
        return;
    }
    response.status = 200;
    response.set_content(page_->bytes.data(), page_->bytes.size(), std::string(page_->type));
}

void Connection::AnswerReadiness(httplib::Response& response) {
    const nlohmann::json state = front_.line.state();
    const bool is_ready = state.at("ready") > 0 && !front_.line.is_stopping();
    nlohmann::ordered_json json;
    json["schema"] = "hundredweight/readiness/1";
    json["ready"] = is_ready;
    json["generation"] = state.at("generation");
    json["workers"] = state.at("ready");
    json["reload_failure"] = state.at("failure");
    Reply({is_ready ? 200 : StatusOf(kNotReady), "application/json", DocumentOf(json), {}},
          response);
}

void Connection::AnswerBody(const httplib::Request& request, httplib::Response& response,
                            const httplib::ContentReader& reader) {
    try {
        if (route_->kind == RouteKind::kBatch) {
            TermsOf(request, *route_);
            AnswerBatch(request, reader, response);
        } else {
            std::string body;
            const bool is_read = reader([&](const char* bytes, std::size_t size) {
                body.append(bytes, size);
                return true;
            });
            if (!is_read || !stream_.is_read()) throw stream_.BodyFault();
            AnswerDesk(request, std::move(body), response);
        }
    } catch (const BadRequest& problem) {
        AnswerProblem(problem.kind, problem.what(), response);
    }
    if (!stream_.is_read()) request_->set_header("Connection", "close");
}

void Connection::AnswerDesk(const httplib::Request& request, std::string body,
                            httplib::Response& response) {
    DeskRequest asked{route_->desk, TermsOf(request, *route_), std::move(body)};
    const DeskReply reply = front_.line.Ask(asked).get();
    front_.metrics.CountShipments(reply.tally);
    Reply(reply, response);
}

void Connection::AnswerProblem(ProblemKind kind, const std::string& detail,
                               httplib::Response& response) {
    Reply({StatusOf(kind), kProblemType, ProblemDocument(kind, detail), {}}, response);
}

void Connection::Reply(const DeskReply& reply, httplib::Response& response) {
    response.status = reply.status;
    response.set_content(reply.body, reply.type);
    response.set_header(kCacheField, "no-store");
    for (const auto& [name, value] : route_->FieldsOf(reply.status)) {
        response.set_header(name, value);
    }
}

}  // namespace cwt
