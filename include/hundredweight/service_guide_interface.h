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

/** A terminal: 13 terminated texts, each field a byte wider than the text, padded as the service
 *  guide pads them; 446 bytes. The library interprets none but F2; what the others say here is how
 *  the reference service guide fills them, and another may differ. */
typedef struct TerminalRecord {
  char F1[51];               /**< Name. */
  char F2[6];                /**< The terminal's code; one in "XXX" stands for none. */
  char F3[51];               /**< Address. */
  char F4[51];               /**< Address, second line. */
  char F5[31];               /**< City. */
  char F6[3];                /**< State or province, two letters. */
  char F7[11];               /**< Postal code. */
  char F8[13];               /**< Telephone. */
  char F9[13];               /**< Toll-free telephone. */
  char F10[13];              /**< Fax. */
  char F11[101];             /**< Hours. */
  char F12[51];              /**< Manager. */
  char F13[51];              /**< Electronic mail. */
} TerminalRecord;

/** A terminal as the service guide answers it: the 13 texts of TerminalRecord without terminators;
 *  433 bytes. */
typedef struct TerminalAnswer {
  char F1[50];
  char F2[5];                /**< Cleared before a request. */
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

/** The block through which all requests and answers go: 1920 bytes, one for the process, owned by
 *  the library and zeroed at the start. "Start" and "request" fields are written by the library,
 *  "answer" fields by the guide; GuideByte... are the guide's own. */
typedef struct ServiceGuideBlock {
  char Status[4];            /**< Answer: "1001" is success, "1002" to "1098" a failure. */
  char RequestKind[3];       /**< Request: "UNQ". */
  char SetByte255[4];        /**< Request: RateContext.SetByte255, from the settings record. */
  char SetByte260;           /**< Request: 'A' when RateContext.SetByte260 is '1', else 'B'. */
  char GuideBytes1[17];      /**< The start's data begins here; zero. */
  char DataDirectory[256];   /**< Start: DataDir without its last separator, terminated. */
  char GuideBytes2[285];
  /** Request: postal code of the first point, zero-filled; 0 as sixth character of a letter code
   *  when both points are asked for at once. */
  char FirstZip[6];
  char SecondZip[6];         /**< Request: postal code of the second point, alike. */
  char GuideBytes3[50];
  char FirstTerminal[5];     /**< Answer: terminal code of the first point. */
  char SecondTerminal[5];    /**< Answer: terminal code of the second point. */
  char FirstServiceCode;     /**< Answer: service code of the first point; 'D' is direct. */
  char SecondServiceCode;    /**< Answer: service code of the second point. */
  char GuideByte4;
  char ValueC[2];            /**< Answer: third value of the pair of points; empty reads "00". */
  char ValueA[2];            /**< Answer: first value of the pair of points, passed through. */
  char ValueB[2];            /**< Answer: second value of the pair of points, passed through. */
  char GuideBytes5[816];
  char TerminalZip[6];       /**< Terminal request: postal code, FirstZip or SecondZip. */
  TerminalAnswer Terminal;   /**< Answer to a terminal request. */
  char GuideBytes6[14];
} ServiceGuideBlock;

#pragma pack(pop)
/* clang-format on */

/** Starts the service guide on DataDirectory; the data begins at the block's byte 12, GuideBytes1.
 *  The status tells success; the result is not read. */
typedef int32_t(HWT_CALL* ServGd_InitializeFunction)(char* block, char* data);
/** Answers for the two points FirstZip and SecondZip; the data begins at FirstZip. The status tells
 *  success, 1101 and above that the points are to be asked for one by one; the result is not read.
 */
typedef int32_t(HWT_CALL* ServGd_GetServGuideDataFunction)(char* block, char* data);
/** Answers the record of the terminal that serves TerminalZip, where the data begins. The status
 *  tells success; the result is not read. */
typedef int32_t(HWT_CALL* ServGd_GetTerminalsFunction)(char* block, char* data);
/** Days between two terminals. Bound, but never called. */
typedef int32_t(HWT_CALL* ServGd_GetTermToTermDaysFunction)(char* block, char* data);
/** Ends the service guide. Result: not 0 on success. */
typedef uint8_t(HWT_CALL* ServGd_TerminateFunction)(void);

#endif
