// What a host may ask without a record or a message box.
#include <hundredweight/platform.h>
#include <hundredweight/version.h>

#include "frame/error_text.h"

const char* HundredweightVersion(void) {
    return HWT_VERSION;
}

const char* ErrorCodeText(int32_t code) {
    static char text[hundredweight::kMessageSize];
    hundredweight::GetErrorText(code, text);
    return text;
}
