#include "platform/socket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace cwt {
namespace {

constexpr int kYes = 1;

int MillisecondsTo(Clock::time_point deadline) {
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    return static_cast<int>(std::clamp(left, milliseconds(0), milliseconds(1 << 30)).count());
}

/// Waits for an event, with interruptions. False at the deadline.
bool Poll(int number, short events, Clock::time_point deadline) {
    pollfd end{number, events, 0};
    for (;;) {
        const int count = poll(&end, 1, MillisecondsTo(deadline));
        if (count > 0) return true;
        if (count == 0 || errno != EINTR) return false;
    }
}

using Found = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

Found Find(const Address& address) {
    addrinfo wanted = {};
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo* first = nullptr;
    const int failure =
        getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &first);
    if (failure != 0) throw std::runtime_error(address.host + ": " + gai_strerror(failure));
    return {first, freeaddrinfo};
}

bool IsLoopback(const sockaddr* address) {
    if (address->sa_family == AF_INET) {
        constexpr unsigned kFirstByte = 24;
        const auto* const four = reinterpret_cast<const sockaddr_in*>(address);
        return ntohl(four->sin_addr.s_addr) >> kFirstByte == IN_LOOPBACKNET;
    }
    const auto* const six = reinterpret_cast<const sockaddr_in6*>(address);
    return IN6_IS_ADDR_LOOPBACK(&six->sin6_addr) != 0;
}

/// The numeric host and port of an end of a connection.
std::pair<std::string, std::string> NumbersOf(int number, int (*end)(int, sockaddr*, socklen_t*)) {
    sockaddr_storage address = {};
    socklen_t size = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    char host[NI_MAXHOST] = "", port[NI_MAXSERV] = "";
    if (end(number, plain, &size) == 0) {
        getnameinfo(plain, size, host, sizeof host, port, sizeof port,
                    NI_NUMERICHOST | NI_NUMERICSERV);
    }
    return {host, port};
}

}  // namespace

bool Address::is_loopback() const {
    const Found found = Find(*this);
    for (const addrinfo* each = found.get(); each != nullptr; each = each->ai_next) {
        if (!IsLoopback(each->ai_addr)) return false;
    }
    return true;
}

Socket::Socket(Socket&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Socket::~Socket() {
    if (number_ >= 0) close(number_);
}

bool Socket::Await(Clock::time_point deadline) const {
    return Poll(number_, POLLIN, deadline);
}

std::size_t Socket::Read(std::span<char> buffer, Clock::time_point deadline) const {
    while (Await(deadline)) {
        const ssize_t count = recv(number_, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR && errno != EAGAIN) break;
    }
    return 0;
}

bool Socket::Write(std::string_view bytes, std::chrono::seconds patience) const {
    while (!bytes.empty()) {
        if (!Poll(number_, POLLOUT, Clock::now() + patience)) return false;
        const ssize_t count =
            send(number_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR && errno != EAGAIN) return false;
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void Socket::EndGently() const {
    constexpr std::chrono::milliseconds kLongest(500);
    constexpr std::size_t kMost = std::size_t{4} << 20;
    shutdown(number_, SHUT_WR);
    const Clock::time_point deadline = Clock::now() + kLongest;
    char unread[1 << 14];
    for (std::size_t count, all = 0; all < kMost && (count = Read(unread, deadline)) > 0;) {
        all += count;
    }
}

std::string Socket::peer() const {
    return NumbersOf(number_, getpeername).first;
}

Listener::Listener(const Address& address) {
    const Found found = Find(address);
    number_ = socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    setsockopt(number_, SOL_SOCKET, SO_REUSEADDR, &kYes, sizeof kYes);
    if (number_ < 0 || bind(number_, found->ai_addr, found->ai_addrlen) != 0 ||
        listen(number_, SOMAXCONN) != 0) {
        const int reason = errno;
        if (number_ >= 0) close(number_);
        throw std::runtime_error(address.host + ":" + std::to_string(address.port) + ": " +
                                 std::generic_category().message(reason));
    }
}

Listener::~Listener() {
    close(number_);
}

std::optional<Socket> Listener::Accept(std::chrono::milliseconds longest) const {
    constexpr std::chrono::milliseconds kPause(10);
    if (!Poll(number_, POLLIN, Clock::now() + longest)) return std::nullopt;
    const int number = accept4(number_, nullptr, nullptr, SOCK_CLOEXEC);
    if (number < 0) {
        // Out of files, say: who waits goes on waiting.
        if (errno != EAGAIN) poll(nullptr, 0, static_cast<int>(kPause.count()));
        return std::nullopt;
    }
    setsockopt(number, IPPROTO_TCP, TCP_NODELAY, &kYes, sizeof kYes);
    return Socket(number);
}

int Listener::port() const {
    return std::stoi(NumbersOf(number_, getsockname).second);
}

}  // namespace cwt
