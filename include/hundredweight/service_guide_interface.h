/**
 * What the library exchanges with a service guide, the partner library that knows which terminals
 * serve a point. Packed; texts are single-byte characters without terminators unless stated.
 */
#ifndef HUNDREDWEIGHT_SERVICE_GUIDE_INTERFACE_H
#define HUNDREDWEIGHT_SERVICE_GUIDE_INTERFACE_H

#include <hundredweight/abi.h>
#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** A terminal: 13 terminated texts, passed through as the service guide gives them; 446 bytes. */
typedef struct TerminalRecord {
  char F1[51];
  char F2[6];                /**< The terminal's code. */
  char F3[51];
  char F4[51];
  char F5[31];
  char F6[3];
  char F7[11];
  char F8[13];
  char F9[13];
  char F10[13];
  char F11[101];
  char F12[51];
  char F13[51];
} TerminalRecord;

/** A terminal as the service guide answers it: the same 13 texts without terminators. */
typedef struct TerminalAnswer {
  char F1[50];
  char F2[5];
  char F3[50];
  char F4[50];
  char F5[30];
  char F6[2];
  char F7[10];
  char F8[12];
  char F9[12];
  char F10[12];
  char F11[100];
  char F12[50];
  char F13[50];
} TerminalAnswer;

/** The block through which all requests and answers go: 1920 bytes. */
typedef struct ServiceGuideBlock {
  char Status[4];            /**< Answer: "1001" is success, "1002" to "1098" a failure. */
  char RequestKind[3];       /**< Request: "UNQ". */
  char SetByte255[4];        /**< Request: from the settings record. */
  char SetByte260;           /**< Request: 'A' or 'B', from the settings record. */
  char GuideBytes1[17];      /**< The start's data begins here; zero. */
  char DataDirectory[256];   /**< Start: without its last separator, terminated. */
  char GuideBytes2[285];
  char FirstZip[6];          /**< Request: postal code of the first point. */
  char SecondZip[6];         /**< Request: postal code of the second point. */
  char GuideBytes3[50];
  char FirstTerminal[5];     /**< Answer: terminal code of the first point. */
  char SecondTerminal[5];    /**< Answer: terminal code of the second point. */
  char FirstServiceCode;     /**< Answer. */
  char SecondServiceCode;    /**< Answer. */
  char GuideByte4;
  char ValueC[2];            /**< Answer. */
  char ValueA[2];            /**< Answer. */
  char ValueB[2];            /**< Answer. */
  char GuideBytes5[816];
  char TerminalZip[6];       /**< Terminal request: postal code. */
  TerminalAnswer Terminal;   /**< Answer. */
  char GuideBytes6[14];
} ServiceGuideBlock;

#pragma pack(pop)
/* clang-format on */

/** Starts the service guide; the data begins at the block's byte 12. The result is not read. */
typedef int32_t(HWT_CALL* ServGd_InitializeFunction)(char* block, char* data);
/** Answers for two points; the data begins at FirstZip. The result is not read. */
typedef int32_t(HWT_CALL* ServGd_GetServGuideDataFunction)(char* block, char* data);
/** Answers a terminal record; the data begins at TerminalZip. The result is not read. */
typedef int32_t(HWT_CALL* ServGd_GetTerminalsFunction)(char* block, char* data);
/** Bound, but never called. */
typedef int32_t(HWT_CALL* ServGd_GetTermToTermDaysFunction)(char* block, char* data);
/** Ends the service guide. Result: not 0 on success. */
typedef uint8_t(HWT_CALL* ServGd_TerminateFunction)(void);

#endif
