// The head of an HTTP request, read strictly: what a proxy could take in another way is refused.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/problem.h"

namespace cwt {

/// A request that is not answered but by a problem.
struct BadRequest : std::runtime_error {
    BadRequest(ProblemKind what_kind, const std::string& detail)
        : std::runtime_error(detail), kind(what_kind) {}
    ProblemKind kind;
};

struct Head {
    static constexpr std::size_t kLongest = std::size_t{16} << 10;  ///< Bytes.

    std::string method;
    std::string target;
    bool is_newest = true;                                    ///< HTTP/1.1, not 1.0.
    std::vector<std::pair<std::string, std::string>> fields;  ///< Names in small letters.
    std::size_t length = 0;  ///< Of the body, unless it is chunked.
    bool is_chunked = false;
    bool ends_connection = false;

    /// The value of a field; empty when there is none.
    std::string_view Find(std::string_view name) const;

    bool has_body() const { return is_chunked || length > 0; }

    /// Without the query.
    std::string_view path() const { return std::string_view(target).substr(0, target.find('?')); }

    /// The head for the library, without what it would act on and this service does not offer.
    std::string ForLibrary() const;
};

/// Reads a head, up to and with the empty line. Throws BadRequest.
Head ReadHead(std::string_view text);

}  // namespace cwt
