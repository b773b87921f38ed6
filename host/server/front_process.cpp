#include "server/front_process.h"

#include <hundredweight/platform.h>

#include <exception>
#include <string>

#include "platform/system.h"
#include "server/service_messages.h"

namespace cwt {

std::unique_ptr<WorkerProcess> StartFrontProcess(const FrontTerms& terms) {
    return std::make_unique<WorkerProcess>([&](Foreman& foreman) {
        IgnoreWishes();
        void* const module = LoadPartnerLibrary("cwt-front");
        void* const run = module == nullptr ? nullptr : FunctionOf(module, kFrontFunction);
        if (run == nullptr) return foreman.Send({ServiceMessage::kBroken, PartnerLibraryError()});
        try {
            reinterpret_cast<FrontFunction*>(run)(terms, foreman);
        } catch (const std::exception& error) {
            foreman.Send({ServiceMessage::kBroken, error.what()});
        }
    });
}

}  // namespace cwt
