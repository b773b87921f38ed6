// Connections over TCP, each read and written with a limit of time.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cwt {

using Clock = std::chrono::steady_clock;

struct Address {
    std::string host;  ///< A number or a name; without the brackets of IPv6.
    int port = 0;

    /// Whether nobody but this machine reaches it.
    bool is_loopback() const;
};

/// A connection, which is closed with this object.
class Socket {
 public:
    explicit Socket(int number) : number_(number) {}
    ~Socket();
    Socket(Socket&& other) noexcept;
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// Waits until there is something to read, or the other side has ended. False at the deadline.
    bool Await(Clock::time_point deadline) const;

    /// Reads what there is; 0 at the end, after a failure and at the deadline.
    std::size_t Read(std::span<char> buffer, Clock::time_point deadline) const;

    /// Writes all of it. False when the other side is gone, or takes nothing for so long.
    bool Write(std::string_view bytes, std::chrono::seconds patience) const;

    /// Ends in such a way that what was written arrives, though something was not read.
    void EndGently() const;

    std::string peer() const;
    int number() const { return number_; }

 private:
    int number_;
};

/// Takes connections at an address.
class Listener {
 public:
    /// Throws std::runtime_error, with the reason, when the address cannot be had.
    explicit Listener(const Address& address);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// The next connection; nothing when none has come for so long.
    std::optional<Socket> Accept(std::chrono::milliseconds longest) const;

    /// The port; one of the system's choice when 0 was asked for.
    int port() const;

 private:
    int number_ = -1;
};

}  // namespace cwt
