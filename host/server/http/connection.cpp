#include "server/http/connection.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "server/http/documents.h"
#include "server/http/security_fields.h"
#include "server/service_log.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

using enum ProblemKind;

constexpr std::size_t kLongestShipment = std::size_t{1} << 20;
constexpr std::chrono::seconds kForShipment(10);
constexpr std::chrono::seconds kForBatch(600);
constexpr unsigned kMostRequests = 1000;  // On one connection.
constexpr int kUnavailable = 503;

const Route kPageRoute = {"/", RouteKind::kPage};
const Route kOtherRoute = {"other", RouteKind::kPage};

/// Fields that a status calls for.
std::vector<std::pair<std::string, std::string>> FieldsOf(int status, const Route& route) {
    constexpr int kNoToken = 401;
    constexpr int kNoSuchMethod = 405;
    if (status == kNoToken) return {{"WWW-Authenticate", "Bearer"}};
    if (status == kNoSuchMethod) return {{"Allow", route.methods()}};
    if (status == kUnavailable) return {{"Retry-After", "1"}};
    return {};
}

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

FrontDesk::FrontDesk(const FrontTerms& what_terms, Foreman& foreman)
    : terms(what_terms),
      line(foreman, terms.first_id),
      gate(terms.address, terms.token),
      open_api(OpenApiDocument()) {}

Connection::Connection(FrontDesk& front, Socket socket)
    : front_(front), stream_(std::move(socket)), route_(&kOtherRoute) {
    // The library stops writing when it has no socket of its own to listen at.
    svr_sock_ = stream_.socket();
    httplib::Headers fields;
    for (const auto& [name, value] : kSecurityFields) fields.emplace(name, value);
    set_default_headers(std::move(fields));
    set_keep_alive_max_count(kMostRequests);
    set_keep_alive_timeout(HttpStream::kIdle.count());
    set_pre_routing_handler(
        [this](const auto& request, auto& response) { return AnswerReading(request, response); });
    Post(".*", [this](const auto& request, auto& response, const auto& reader) {
        AnswerBody(request, response, reader);
    });
    set_error_handler(Handler([this](const auto& /*request*/, auto& response) {
        if (response.body.empty()) {
            AnswerProblem(kBadRequest, "The request cannot be read", response);
        }
    }));
    set_exception_handler([this](const auto& /*request*/, auto& response, auto /*error*/) {
        AnswerProblem(kNotReady, "The request could not be worked on", response);
    });
    set_logger(
        [this](const auto& /*request*/, const auto& response) { status_ = response.status; });
}

void Connection::Serve() {
    for (unsigned count = 1; ServeOne(count == kMostRequests); ++count) continue;
}

void Connection::TurnAway() {
    since_ = Clock::now();
    WriteProblem({kBusy, "There are too many connections"});
    Log();
}

bool Connection::ServeOne(bool is_last) {
    head_ = nullptr;
    route_ = &kOtherRoute;
    page_ = nullptr;
    broken_off_.clear();
    bool goes_on = false;
    try {
        head_ = stream_.NextHead(front_.line.is_stopping());
        if (head_ == nullptr) return false;
        since_ = Clock::now();
        Admit();
        bool is_closed = is_last || head_->ends_connection || front_.line.is_stopping();
        const bool is_written = process_request(stream_, is_closed, is_closed,
                                                [this](auto& request) { request_ = &request; });
        goes_on = is_written && !is_closed && stream_.is_read();
        if (!goes_on && is_written) stream_.EndGently();
    } catch (const BadRequest& problem) {
        if (head_ == nullptr) since_ = Clock::now();
        WriteProblem(problem);
    }
    batch_.reset();
    Log();
    return goes_on;
}

/// Finds the route, and lets the request in.
void Connection::Admit() {
    page_ = FindPage(head_->path());
    route_ = page_ != nullptr ? &kPageRoute : FindRoute(head_->path());
    if (route_ == nullptr) {
        route_ = &kOtherRoute;
        throw BadRequest(kNotFound, "There is nothing at this address");
    }
    front_.gate.RequireAllowed(*head_, *route_);
    const bool is_batch = route_->kind == RouteKind::kBatch;
    if (is_batch && !head_->is_newest) throw BadRequest(kBadRequest, "A batch wants HTTP/1.1");
    stream_.Admit(is_batch ? front_.terms.longest_batch : kLongestShipment,
                  is_batch ? kForBatch : kForShipment);
}

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
    Reply({is_ready ? 200 : kUnavailable, "application/json", DocumentOf(json), {}}, response);
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
    for (const auto& [name, value] : FieldsOf(reply.status, *route_)) {
        response.set_header(name, value);
    }
}

void Connection::WriteProblem(const BadRequest& problem) {
    status_ = StatusOf(problem.kind);
    const std::string document = ProblemDocument(problem.kind, problem.what());
    std::string text = fmt::format(
        "HTTP/1.1 {} {}\r\nConnection: close\r\nContent-Type: {}\r\nContent-Length: {}\r\n"
        "{}: no-store\r\n",
        status_, NameOf(problem.kind), kProblemType, document.size(), kCacheField);
    const auto add = [&](std::string_view name, std::string_view value) {
        text += fmt::format("{}: {}\r\n", name, value);
    };
    for (const auto& [name, value] : kSecurityFields) add(name, value);
    for (const auto& [name, value] : FieldsOf(status_, *route_)) add(name, value);
    text += "\r\n";
    if (head_ == nullptr || head_->method != "HEAD") text += document;
    stream_.write(text.data(), text.size());
    stream_.EndGently();
}

void Connection::Log() const {
    const std::chrono::duration<double, std::milli> time = Clock::now() - since_;
    const std::string route(route_->path);
    front_.metrics.CountRequest(route, status_, time);
    nlohmann::ordered_json told = {{"remote", stream_.peer()},
                                   {"method", head_ == nullptr ? "" : head_->method},
                                   {"route", route},
                                   {"status", status_},
                                   {"milliseconds", std::round(time.count() * 1000) / 1000},
                                   {"bytes", stream_.written()}};
    if (!broken_off_.empty()) told["broken_off"] = broken_off_;
    LogEvent("request", told);
}

}  // namespace cwt
