#include "server/http/http_stream.h"

#include <fmt/core.h>

#include <algorithm>

namespace cwt {
namespace {

constexpr std::chrono::seconds kForHead(10);
constexpr std::chrono::milliseconds kGlance(100);
constexpr std::chrono::seconds kWritePatience(30);
constexpr std::string_view kHeadEnd = "\r\n\r\n";

}  // namespace

/// Reads what has come. False at the end and at the deadline.
bool HttpStream::FillUp(Clock::time_point deadline) {
    char bytes[1 << 14];
    const std::size_t count = socket_.Read(bytes, deadline);
    buffer_.append(bytes, count);
    return count > 0;
}

bool HttpStream::AwaitBegin(const std::atomic<bool>& is_stopping) {
    const Clock::time_point deadline = Clock::now() + kIdle;
    while (buffer_.empty() && !socket_.Await(Clock::now() + kGlance)) {
        if (is_stopping || Clock::now() > deadline) return false;
    }
    return !buffer_.empty() || FillUp(Clock::now());
}

std::string HttpStream::TakeHead() {
    const Clock::time_point deadline = Clock::now() + kForHead;
    for (;;) {
        while (buffer_.starts_with("\r\n")) buffer_.erase(0, 2);
        const std::size_t end = buffer_.find(kHeadEnd);
        if (std::min(end, buffer_.size()) > Head::kLongest) {
            throw BadRequest(ProblemKind::kHeadersTooLarge,
                             fmt::format("The header is at most {} bytes", Head::kLongest));
        }
        if (end != buffer_.npos) {
            std::string text = buffer_.substr(0, end + kHeadEnd.size());
            buffer_.erase(0, text.size());
            return text;
        }
        if (!FillUp(deadline)) {
            if (Clock::now() < deadline) return {};
            throw BadRequest(ProblemKind::kTimeout, "The header did not come in time");
        }
    }
}

const Head* HttpStream::NextHead(const std::atomic<bool>& is_stopping) {
    written_ = 0;
    head_ = {};
    frame_ = {};
    if (!AwaitBegin(is_stopping)) return nullptr;
    const std::string text = TakeHead();
    if (text.empty()) return nullptr;
    head_ = ReadHead(text);
    head_text_ = head_.ForLibrary();
    head_read_ = 0;
    return &head_;
}

void HttpStream::Admit(std::size_t longest, std::chrono::seconds limit) {
    if (head_.length > longest) {
        throw BadRequest(ProblemKind::kTooLarge,
                         fmt::format("A body is at most {} bytes here", longest));
    }
    frame_ = BodyFrame(head_.is_chunked, head_.length, longest);
    deadline_ = Clock::now() + limit;
}

BadRequest HttpStream::BodyFault() const {
    using enum ProblemKind;
    if (frame_.is_too_large()) return {kTooLarge, "The body is too large"};
    if (frame_.is_broken()) return {kBadRequest, "The chunks of the body cannot be read"};
    if (Clock::now() >= deadline_) return {kTimeout, "The body did not come in time"};
    return {kBadRequest, "The body has been cut"};
}

ssize_t HttpStream::read(char* ptr, size_t size) {
    if (head_read_ < head_text_.size()) {
        const std::size_t count = head_text_.copy(ptr, size, head_read_);
        head_read_ += count;
        return static_cast<ssize_t>(count);
    }
    if (frame_.is_whole()) return 0;
    if (frame_.is_broken() || (buffer_.empty() && !FillUp(deadline_))) return -1;
    const std::size_t count = frame_.Pass(std::string_view(buffer_).substr(0, size));
    if (frame_.is_broken()) return -1;
    buffer_.copy(ptr, count);
    buffer_.erase(0, count);
    return static_cast<ssize_t>(count);
}

ssize_t HttpStream::write(const char* ptr, size_t size) {
    if (!socket_.Write({ptr, size}, kWritePatience)) return -1;
    written_ += size;
    return static_cast<ssize_t>(size);
}

void HttpStream::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip = peer_;
    port = 0;
}

void HttpStream::get_local_ip_and_port(std::string& ip, int& port) const {
    ip.clear();
    port = 0;
}

}  // namespace cwt
