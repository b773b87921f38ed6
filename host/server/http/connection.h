// A connection to the service: its requests, one after another.
#pragma once

#include <httplib.h>

#include <atomic>
#include <memory>
#include <string>

#include "files/embedded_file.h"
#include "server/http/batch_answer.h"
#include "server/http/desk_line.h"
#include "server/http/gate.h"
#include "server/http/http_stream.h"
#include "server/http/metrics.h"
#include "server/service_terms.h"

namespace cwt {

/// What all connections have in common.
struct FrontDesk {
    FrontDesk(const FrontTerms& what_terms, Foreman& foreman);

    const FrontTerms terms;
    DeskLine line;
    Metrics metrics;
    const Gate gate;
    const std::string open_api;
    std::atomic<unsigned> connections = 0, batches = 0;
};

class Connection : private httplib::Server {
 public:
    Connection(FrontDesk& front, Socket socket);

    /// Answers until the connection ends.
    void Serve();

    /// Answers nothing but that there are too many connections.
    void TurnAway();

 private:
    /// Answers one request. False when it was the last one.
    bool ServeOne(bool is_last);
    void Admit();
    HandlerResponse AnswerReading(const httplib::Request& request, httplib::Response& response);
    void AnswerBody(const httplib::Request& request, httplib::Response& response,
                    const httplib::ContentReader& reader);
    void AnswerPage(httplib::Response& response);
    void AnswerReadiness(httplib::Response& response);
    void AnswerDesk(const httplib::Request& request, std::string body, httplib::Response& response);
    void AnswerBatch(const httplib::Request& request, const httplib::ContentReader& reader,
                     httplib::Response& response);
    std::unique_ptr<SpoolFile> Spool(const httplib::ContentReader& reader);
    void AnswerProblem(ProblemKind kind, const std::string& detail, httplib::Response& response);
    void Reply(const DeskReply& reply, httplib::Response& response);
    /// Writes a problem past the library, which has not seen the request.
    void WriteProblem(const BadRequest& problem);
    void Log() const;

    FrontDesk& front_;
    HttpStream stream_;
    // Of the request at hand:
    const Head* head_ = nullptr;
    httplib::Request* request_ = nullptr;
    const Route* route_;
    const EmbeddedFile* page_ = nullptr;
    std::unique_ptr<BatchAnswer> batch_;
    std::string broken_off_;  ///< Why an answer was not written to its end.
    Clock::time_point since_ = {};
    int status_ = 0;
};

}  // namespace cwt
