// A connection as the HTTP library reads and writes it, one request after another.
#pragma once

#include <httplib.h>

#include <atomic>
#include <optional>
#include <string>

#include "platform/socket.h"
#include "server/http/body_frame.h"
#include "server/http/head.h"

namespace cwt {

/// The library gets a request's head and body, in time, and no byte of what follows them.
class HttpStream : public httplib::Stream {
 public:
    /// How long a connection may be idle.
    static constexpr std::chrono::seconds kIdle{15};

    explicit HttpStream(Socket socket) : socket_(std::move(socket)), peer_(socket_.peer()) {}

    /// Waits for the next request, and reads its head. Nothing when the connection ends, or nothing
    /// has come in time or since `is_stopping`. Throws BadRequest.
    const Head* NextHead(const std::atomic<bool>& is_stopping);

    /// Has the body follow, of no more than so many bytes and seconds. Throws BadRequest when it is
    /// known to be longer.
    void Admit(std::size_t longest, std::chrono::seconds limit);

    /// Whether all of the request has been read.
    bool is_read() const { return head_read_ == head_text_.size() && frame_.is_whole(); }

    /// Why the body could not be read.
    BadRequest BodyFault() const;

    std::size_t written() const { return written_; }
    const std::string& peer() const { return peer_; }
    void EndGently() const { socket_.EndGently(); }

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* ptr, size_t size) override;
    ssize_t write(const char* ptr, size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return socket_.number(); }

 private:
    bool AwaitBegin(const std::atomic<bool>& is_stopping);
    std::string TakeHead();
    bool FillUp(Clock::time_point deadline);

    Socket socket_;
    std::string peer_;
    std::string buffer_;  ///< What has come and is not passed on.
    Head head_;
    std::string head_text_;
    std::size_t head_read_ = 0;
    BodyFrame frame_;
    Clock::time_point deadline_ = {};
    std::size_t written_ = 0;
};

}  // namespace cwt
