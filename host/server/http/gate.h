// Who may come in, and with what.
#pragma once

#include <string>

#include "platform/socket.h"
#include "server/http/head.h"
#include "server/http/route.h"

namespace cwt {

class Gate {
 public:
    Gate(const Address& address, std::string token);

    /// Throws BadRequest when a request may not come in: it is meant for another host, comes from a
    /// foreign page, has no valid token, or a method or type that is not taken there.
    void RequireAllowed(const Head& head, const Route& route) const;

 private:
    void RequireHost(const Head& head) const;
    void RequireToken(const Head& head) const;

    std::string host_;
    std::string token_;
    bool is_open_;  ///< To anybody on this machine, a page in his browser too.
};

/// The type of a body, in small letters and without its parameters; empty when none is told.
/// Throws BadRequest when its letters are not UTF-8.
std::string TypeOfBody(const Head& head);

}  // namespace cwt
