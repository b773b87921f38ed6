// A rating service: the process that starts and ends all others, and hands requests to them.
#pragma once

#include "server/service_terms.h"

namespace cwt {

/// Serves until the program is asked to end. Result: whether everything that was accepted has been
/// answered. Throws Broken when the data do not load at the start, or the address cannot be had.
bool Serve(const ServiceTerms& terms);

}  // namespace cwt
