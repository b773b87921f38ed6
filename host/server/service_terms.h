// What a rating service is told at its start.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/socket.h"
#include "session/sources.h"

namespace cwt {

/// What its front needs of that.
struct FrontTerms {
    Address address;
    std::string token;  ///< That requests must carry; empty when none is wanted.
    unsigned jobs = 1;
    unsigned connections = 256;
    std::size_t longest_batch = std::size_t{256} << 20;  ///< Bytes of its body.
    /// Ids of requests begin here, beyond those of a front before.
    std::uint64_t first_id = 0;
};

struct ServiceTerms {
    FrontTerms front;
    Sources sources;                   ///< A symbolic link to the data may lead elsewhere later.
    std::chrono::seconds timeout{30};  ///< For one request.
    std::size_t queue = 16;            ///< The most requests that wait for a process.
    bool watch = false;                ///< Whether changed data are loaded unasked.
};

}  // namespace cwt
