/** A named set of rating settings, laid out alike in PROFILE.FIL and in the RateContext; packed. */
#ifndef HUNDREDWEIGHT_PROFILE_RECORD_H
#define HUNDREDWEIGHT_PROFILE_RECORD_H

#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** Discount for a pair of postal-code ranges, or of states: 117 bytes of text, host input. Postal
 *  codes are padded with blanks or zero bytes and compared over their first 5 bytes, or 3 when
 *  ZipLength is '3', both ends of a range included. Numbers are decimal texts, 0 when blank. */
typedef struct ZipDiscountRecord {
  char OrigLow[7];           /**< Lowest origin postal code; blanks make this a state record. */
  char OrigHigh[7];          /**< Highest origin postal code, or the origin state in 2 bytes. */
  char DestLow[7];           /**< Lowest destination postal code; not read in a state record. */
  char DestHigh[7];          /**< Highest destination postal code, or the destination state. */
  char FlatPercent[8];       /**< Flat percentage; 0 when NoFlatDiscountFlag is 'Y'. */
  char BreakPercent[9][8];   /**< Percentage per weight break, lightest first. */
  char Floor[7];             /**< Minimum charge in dollars. */
  char HostBytes[2];         /**< The host's; not read. */
} ZipDiscountRecord;

/** One profile: 17897 bytes. The host edits profiles and writes the file's records itself;
 *  ReadProfileFile creates one named "Default", GetProfileRecord loads one, LoadProfileSettings
 *  makes it take effect. "DEF n" names the bytes of the DEF record that a field saves and that
 *  LoadProfileSettings copies back; bytes of DEF without a name there are the host's. */
typedef struct ProfileRecord {
  char ProfileName[31];      /**< Name and key, compared over all 31 bytes; zero-filled. */
  int32_t ClassMapOn;        /**< Non-zero: ClassMap applies. */
  /** What each of the first 18 entries of ClassTable, as many as the National Motor Freight
   *  Classification (NMFC) has, is rated as; texts, terminated unless they fill their 4 bytes. */
  char ClassMap[18][4];
  int16_t SavedSurchargeOn;  /**< DEF 12-13; 0: the alternative below serves, if it is on. */
  float SavedFactorLow;      /**< DEF 41-44: surcharge percentage below the surcharge break. */
  float SavedFactorHigh;     /**< DEF 256-259: surcharge percentage from that break on. */
  int16_t SavedDef179;       /**< DEF 179-180, number. */
  char SavedDef172[5];       /**< DEF 172-176, bytes. */
  char SavedDef181[5];       /**< DEF 181-185, bytes. */
  int16_t SavedDef159;       /**< DEF 159-160, number. */
  char SavedDef150[7];       /**< DEF 150-156, bytes. */
  int16_t SavedDef170;       /**< DEF 170-171, number. */
  char SavedDef161[7];       /**< DEF 161-167, bytes. */
  char SavedDef31;           /**< DEF 31, the character sent to the engine with discounts. */
  char Reserved1;            /**< 0. */
  int16_t DiscModeP;         /**< Non-zero: the entered discount values are consulted. */
  int16_t DiscModeC;         /**< Non-zero: the discount file's groups are consulted. */
  int16_t DiscModeZ;         /**< Non-zero: ZipDiscounts and an own ZIP table are consulted. */
  /** Two sets of 11, for discount groups 0 and 1: 9 percentages, one per weight break, and a flat
   *  percentage, each below 100; then a minimum charge in dollars, below 1000. */
  float DiscountValues[22];
  ZipDiscountRecord ZipDiscounts[150]; /**< Searched in order; the first match is taken. */
  int32_t ZipDiscountCount;  /**< Entries of ZipDiscounts in use, 0 to 150. */
  int16_t AltSurchargeOn;    /**< Used when SavedSurchargeOn is 0; both 0: DEF stays. */
  float AltFactorLow;        /**< Alternative to SavedFactorLow, a percentage. */
  float AltFactorHigh;       /**< Alternative to SavedFactorHigh, a percentage. */
  char Reserved2[90];        /**< 0 in a record that the library creates. */
} ProfileRecord;

#pragma pack(pop)
/* clang-format on */

#endif
