// A batch on a connection: its rows in, then the rows out.
#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "files/packing.h"
#include "server/http/connection.h"
#include "server/http/security_fields.h"

namespace cwt {
namespace {

using enum ProblemKind;

constexpr std::uint64_t kMostRows = 5000000;
constexpr unsigned kMostBatches = 8;
constexpr std::chrono::hours kLongest(1);  // Since a batch came.
constexpr std::size_t kBeginning = 4;      // Bytes that tell whether rows are packed.

/// The forms of the rows by what the request says of them.
BatchAnswerTerms TermsOf(const Head& head) {
    const std::string_view accepted = head.Find("accept");
    const auto accepts = [&](const char* type) { return accepted.find(type) != accepted.npos; };
    BatchAnswerTerms terms;
    terms.from = terms.to = TypeOfBody(head) == "text/csv" ? Form::kCsv : Form::kNdjson;
    if (accepts("application/x-ndjson")) {
        terms.to = Form::kNdjson;
    } else if (accepts("text/csv")) {
        terms.to = Form::kCsv;
    } else if (!accepted.empty() && !accepts("*/*")) {
        throw BadRequest(kNotAcceptable, "Rows are answered as application/x-ndjson or text/csv");
    }
    return terms;
}

/// A text of any letters in a field of a head.
std::string Encoded(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        const bool is_plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                              (c >= 'a' && c <= 'z') || c == '_' || c == '-' || c == '.';
        encoded +=
            is_plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return encoded;
}

/// Tells what `cwt batch` says of the rows of a whole run.
void TellFacts(const BatchAnswer::Facts& facts, httplib::Response& response) {
    response.set_header("Cwt-Rows", std::to_string(facts.rows));
    if (facts.rows_of_lines.rows > 0) {
        response.set_header(
            "Cwt-Rows-Of-Several-Lines",
            fmt::format("{}; first={}", facts.rows_of_lines.rows, facts.rows_of_lines.first));
    }
    std::string passed;
    for (const std::string& name : facts.passed) {
        passed += (passed.empty() ? "" : ",") + Encoded(name);
    }
    if (!passed.empty()) response.set_header("Cwt-Columns-Passed", passed);
}

}  // namespace

/// Takes the rows in before any is answered, for few clients read while they write.
std::unique_ptr<SpoolFile> Connection::Spool(const httplib::ContentReader& reader) {
    std::string beginning;
    std::uint64_t rows = 0;
    try {
        auto spool = std::make_unique<SpoolFile>();
        const bool is_read = reader([&](const char* bytes, std::size_t size) {
            spool->Append({bytes, size});
            if (beginning.size() < kBeginning) beginning.append(bytes, std::min(size, kBeginning));
            rows += static_cast<std::uint64_t>(std::count(bytes, bytes + size, '\n'));
            return rows <= kMostRows;
        });
        if (rows > kMostRows) {
            throw BadRequest(kTooLarge, fmt::format("A batch has at most {} rows here", kMostRows));
        }
        if (!is_read || !stream_.is_read()) throw stream_.BodyFault();
        if (PackingOf(beginning) != Packing::kNone) {
            throw BadRequest(kWrongType, "Rows are taken as they are, not packed");
        }
        return spool;
    } catch (const BadRequest&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw BadRequest(kNotReady, error.what());
    }
}

void Connection::AnswerBatch(const httplib::Request& request, const httplib::ContentReader& reader,
                             httplib::Response& response) {
    const unsigned before = front_.batches++;
    const auto leave = [](FrontDesk* front) { --front->batches; };
    const std::shared_ptr<FrontDesk> place(&front_, leave);
    if (before >= kMostBatches) throw BadRequest(kBusy, "There are too many batches");
    BatchAnswerTerms terms = TermsOf(*head_);
    terms.most_ahead = std::size_t{2} * front_.terms.jobs;
    for (const auto& [name, value] : request.params) terms.allowed.push_back(value);
    auto spool = Spool(reader);
    try {
        batch_ = std::make_unique<BatchAnswer>(front_.line, std::move(spool), terms);
    } catch (const std::runtime_error& error) {
        throw BadRequest(kBadRequest, error.what());
    }
    if (const auto problem = batch_->Begin()) return Reply(*problem, response);
    TellFacts(batch_->LookThrough(), response);
    response.set_header(kCacheField, "no-store");
    const auto next = [this, place](std::size_t /*offset*/, httplib::DataSink& sink) {
        try {
            if (Clock::now() - since_ > kLongest) throw std::runtime_error("it took too long");
            const auto text = batch_->Next();
            if (text) return text->empty() || sink.write(text->data(), text->size());
            front_.metrics.CountShipments(batch_->tally());
            sink.done();
            return true;
        } catch (const std::exception& error) {
            broken_off_ = error.what();
            return false;
        }
    };
    response.status = 200;
    response.set_chunked_content_provider(
        terms.to == Form::kCsv ? "text/csv; charset=utf-8" : "application/x-ndjson", next);
}

}  // namespace cwt
