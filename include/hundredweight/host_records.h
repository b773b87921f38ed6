/** Records that belong to the host and that single functions read or fill. */
#ifndef HUNDREDWEIGHT_HOST_RECORDS_H
#define HUNDREDWEIGHT_HOST_RECORDS_H

#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** Discount groups as LoadDiscounts copies them for the host. */
typedef struct HostDiscountTable {
  char HostBytes[1233];
  int16_t TableType;         /**< Set by the host: 1 = one percentage per group. */
  struct {
    float Floor;             /**< Minimum charge. */
    float FlatPercent;
    float BreakPercent[9];   /**< Percentage per weight break. */
  } Groups[4];
} HostDiscountTable;

/** One named set of the host's options, as ReadFendroOpt returns it: 1797 bytes. */
typedef struct OptionRecord {
  int32_t LayoutMarker;      /**< 1 in a converted record. */
  char OptName[25];          /**< Name and key, terminated. */
  char OptionByte29;
  char OptionBlock30[175];
  char OptionBlock205[6];
  char Reserved211;          /**< 0 in a converted record. */
  char OptionText212[260];
  char OptionBlock472[20];
  int32_t OptionValue492;
  char OptionByte496;
  char OptionByte497;
  char OptionBlock498[474];
  char OptionByte972;
  char OptionText973[260];
  int16_t OptionValue1233;
  char OptionBlock1235[176];
  char Reserved1411[11];     /**< 0 in a converted record. */
  char OptionByte1422;
  char OptionBlock1423[9];
  char Reserved1432[365];    /**< 0 in a converted record. */
} OptionRecord;

#pragma pack(pop)
/* clang-format on */

#endif
