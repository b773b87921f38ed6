// Binding, start and end of the service guide.
#include <hundredweight/exports.h>

#include <cstddef>
#include <cstring>

#include "frame/entry_points.h"
#include "frame/failure.h"
#include "frame/text.h"
#include "platform/file.h"
#include "servguide/service_guide.h"

namespace hundredweight {

ServiceGuide service_guide;

namespace {

#define HWT_ENTRY_POINT(name, code) \
    { #name, code, offsetof(ServiceGuideEntryPoints, name) }

/// In the order in which they are looked up.
constexpr EntryPoint kEntryPoints[] = {
    HWT_ENTRY_POINT(ServGd_Initialize, 525),   HWT_ENTRY_POINT(ServGd_GetServGuideData, 527),
    HWT_ENTRY_POINT(ServGd_GetTerminals, 528), HWT_ENTRY_POINT(ServGd_GetTermToTermDays, 528),
    HWT_ENTRY_POINT(ServGd_Terminate, 529),
};

constexpr std::size_t kLongestDirectory = 255;

std::string_view DirectoryWithoutSeparator(const RateContext& context) {
    std::string_view directory = TerminatedText(context.DataDir).substr(0, kLongestDirectory);
    if (!directory.empty() && platform::IsSeparator(directory.back())) directory.remove_suffix(1);
    return directory;
}

}  // namespace
}  // namespace hundredweight

using namespace hundredweight;

int32_t HWT_CALL GetSGAddresses(RateContext* context, int32_t /*reserved*/) {
    const int32_t code =
        BindEntryPoints(context->ServiceGuideModule, kEntryPoints, &service_guide.entry_points);
    return code == 0 ? 1 : Fail(*context, code);
}

int32_t HWT_CALL InitializeSGdll(RateContext* context) {
    if (context->UseServiceGuide == 0) return 1;
    const auto initialize = service_guide.entry_points.ServGd_Initialize;
    if (initialize == nullptr) return 0;
    ServiceGuideBlock& block = service_guide.block;
    std::memset(&block, 0, sizeof block);
    CopyText(block.DataDirectory, DirectoryWithoutSeparator(*context));
    initialize(block.Status, &block.GuideBytes1[0]);
    return WholeField(block.Status) == kGuideSuccess ? 1 : 0;
}

int32_t HWT_CALL EndSGdll(RateContext* context) {
    if (context->UseServiceGuide == 0) return 1;
    const auto terminate = service_guide.entry_points.ServGd_Terminate;
    return terminate != nullptr && terminate() != 0 ? 1 : 0;
}
