/** The version of these headers. HundredweightVersion of platform.h tells that of the library. */
#ifndef HUNDREDWEIGHT_VERSION_H
#define HUNDREDWEIGHT_VERSION_H

#define HWT_VERSION_MAJOR 0
#define HWT_VERSION_MINOR 1
#define HWT_VERSION_PATCH 0

/** The three as a text, "0.1.0". */
#define HWT_VERSION \
    HWT_TEXT(HWT_VERSION_MAJOR) "." HWT_TEXT(HWT_VERSION_MINOR) "." HWT_TEXT(HWT_VERSION_PATCH)
#define HWT_TEXT(number) HWT_TEXT_ITSELF(number)
#define HWT_TEXT_ITSELF(number) #number

#endif
