// The module that a rating service speaks HTTP by: it takes connections, each in a thread.
#include <hundredweight/abi.h>

#include <chrono>
#include <exception>
#include <system_error>
#include <thread>
#include <utility>

#include "server/front_process.h"
#include "server/http/connection.h"
#include "server/service_log.h"
#include "server/service_messages.h"

namespace cwt {
namespace {

constexpr std::chrono::milliseconds kTick(100);
constexpr unsigned kMostTurnedAway = 16;  // At a time.

/// Serves a connection, in a thread of its own.
void Take(FrontDesk& front, Socket socket) {
    const unsigned before = front.connections++;
    if (before >= front.terms.connections + kMostTurnedAway) {
        --front.connections;
        return;
    }
    try {
        std::thread([&front, before, taken = std::move(socket)]() mutable {
            try {
                Connection connection(front, std::move(taken));
                if (before >= front.terms.connections) {
                    connection.TurnAway();
                } else {
                    connection.Serve();
                }
            } catch (const std::exception& error) {
                LogEvent("connection-lost", {{"reason", error.what()}});
            }
            --front.connections;
        }).detach();
    } catch (const std::system_error&) {
        --front.connections;
    }
}

/// Takes connections until the service is about to end, then those that wait already.
void TakeAll(FrontDesk& front, const Listener& listener) {
    while (!front.line.is_stopping()) {
        if (auto socket = listener.Accept(kTick)) Take(front, std::move(*socket));
    }
    while (auto socket = listener.Accept({})) Take(front, std::move(*socket));
}

}  // namespace
}  // namespace cwt

extern "C" __attribute__((visibility("default"))) void RunFront(const cwt::FrontTerms& terms,
                                                                cwt::Foreman& foreman) {
    using namespace cwt;
    FrontDesk front(terms, foreman);
    std::thread taking([&, listener = std::make_unique<Listener>(terms.address)]() mutable {
        const std::string host = terms.address.host;
        front.line.Say(ServiceMessage::kListening,
                       (host.find(':') == host.npos ? host : "[" + host + "]") + ":" +
                           std::to_string(listener->port()));
        TakeAll(front, *listener);
        listener.reset();
        while (front.connections > 0) std::this_thread::sleep_for(kTick / 10);
        front.line.Say(ServiceMessage::kDone, {});
    });
    front.line.Receive();
    taking.join();
}
