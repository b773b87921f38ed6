// The service guide of the process: its entry points and the block exchanged with it.
#pragma once

#include <hundredweight/service_guide_interface.h>

#include <string_view>

namespace hundredweight {

/// The service guide's functions; null until bound.
struct ServiceGuideEntryPoints {
    ServGd_InitializeFunction ServGd_Initialize;
    ServGd_GetServGuideDataFunction ServGd_GetServGuideData;
    ServGd_GetTerminalsFunction ServGd_GetTerminals;
    ServGd_GetTermToTermDaysFunction ServGd_GetTermToTermDays;
    ServGd_TerminateFunction ServGd_Terminate;
};

/// All records of a process share one service guide; nothing here is locked. The block keeps its
/// contents between calls.
struct ServiceGuide {
    ServiceGuideEntryPoints entry_points{};
    ServiceGuideBlock block{};
};
extern ServiceGuide service_guide;

/// Status of an answer that is a success.
inline constexpr std::string_view kGuideSuccess = "1001";

}  // namespace hundredweight
