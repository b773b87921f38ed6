/** What the library exchanges with a service guide, the partner library that knows terminals. */
#ifndef HUNDREDWEIGHT_SERVICE_GUIDE_INTERFACE_H
#define HUNDREDWEIGHT_SERVICE_GUIDE_INTERFACE_H

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

#pragma pack(pop)
/* clang-format on */

#endif
