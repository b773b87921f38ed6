// What every answer tells a browser not to do.
#pragma once

#include <utility>

namespace cwt {

inline constexpr std::pair<const char*, const char*> kSecurityFields[] = {
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
     "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
};

inline constexpr const char* kCacheField = "Cache-Control";

}  // namespace cwt
