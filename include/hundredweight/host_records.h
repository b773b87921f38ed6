/** Records that belong to the host and that single functions read or fill; packed. */
#ifndef HUNDREDWEIGHT_HOST_RECORDS_H
#define HUNDREDWEIGHT_HOST_RECORDS_H

#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** One discount group of a HostDiscountTable: 44 bytes. */
typedef struct HostDiscountGroup {
  float Floor;               /**< Minimum charge in dollars. */
  /** Flat percentage; of type 1 the group's first percentage, or group 0's for all groups when
   *  DisGroupSelector is '1'. */
  float FlatPercent;
  /** Percentage per weight break; of type 1 the first for all. An entry stays as it was when the
   *  discount file has no such weight column, or one that begins below the tariff's break. */
  float BreakPercent[9];
} HostDiscountGroup;

/** The discount file's four groups as LoadDiscounts copies them for the host: 1411 bytes. */
typedef struct HostDiscountTable {
  char HostBytes[1233];      /**< The host's own; neither read nor written. */
  int16_t TableType;         /**< Host input: 1 = one percentage per group, its first. */
  HostDiscountGroup Groups[4];       /**< Groups 0 to 3 of the discount file. */
} HostDiscountTable;

/** One named set of the host's options, as ReadFendroOpt returns it: 1797 bytes. The members named
 *  for the byte that they begin at are the host's to interpret: single characters (OptionByte),
 *  bytes (OptionBlock), texts as wide as a path (OptionText) and numbers (OptionValue). The library
 *  only moves them to their places from a file of the older layout. */
typedef struct OptionRecord {
  int32_t LayoutMarker;      /**< 1 in a record converted from the older layout. */
  char OptName[25];          /**< Name and key, terminated; white space at its end is removed. */
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
