#include "server/http/connection.h"

#include <fmt/format.h>

#include <cmath>
#include <utility>

#include "server/http/documents.h"
#include "server/http/security_fields.h"
#include "server/service_log.h"

namespace cwt {
namespace {

using enum ProblemKind;

constexpr std::size_t kLongestShipment = std::size_t{1} << 20;
constexpr std::chrono::seconds kForShipment(10);
constexpr std::chrono::seconds kForBatch(600);
constexpr unsigned kMostRequests = 1000;  // On one connection.

const Route kPageRoute = {"/", RouteKind::kPage};
const Route kOtherRoute = {"other", RouteKind::kPage};

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
    for (const auto& [name, value] : route_->FieldsOf(status_)) add(name, value);
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
