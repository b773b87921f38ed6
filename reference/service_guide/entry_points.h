/** The service guide's five entry points; service_guide_interface.h says what each takes and
 *  returns. A process has one service guide, and calls must not overlap. */
#pragma once

#include <hundredweight/service_guide_interface.h>

extern "C" {
HWT_API int32_t HWT_CALL ServGd_Initialize(char* block, char* data);
HWT_API int32_t HWT_CALL ServGd_GetServGuideData(char* block, char* data);
HWT_API int32_t HWT_CALL ServGd_GetTerminals(char* block, char* data);
/** The data begins at FirstTerminal: the codes of the two terminals. */
HWT_API int32_t HWT_CALL ServGd_GetTermToTermDays(char* block, char* data);
HWT_API uint8_t HWT_CALL ServGd_Terminate(void);
}
