// The process that a rating service speaks HTTP in.
#pragma once

#include <memory>

#include "platform/worker_process.h"
#include "server/service_terms.h"

namespace cwt {

/// Starts it. It is in a module of its own, which no other command has to load.
std::unique_ptr<WorkerProcess> StartFrontProcess(const FrontTerms& terms);

/// What it does; the module's one function.
using FrontFunction = void(const FrontTerms& terms, Foreman& foreman);
inline constexpr const char* kFrontFunction = "RunFront";

}  // namespace cwt
