/** A named set of rating settings, laid out alike in PROFILE.FIL and in the RateContext. */
#ifndef HUNDREDWEIGHT_PROFILE_RECORD_H
#define HUNDREDWEIGHT_PROFILE_RECORD_H

#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** Discount for a pair of postal-code ranges, or of states: 117 bytes of text. */
typedef struct ZipDiscountRecord {
  char OrigLow[7];           /**< Lowest origin postal code; blanks make this a state record. */
  char OrigHigh[7];          /**< Highest origin postal code, or the origin state in 2 bytes. */
  char DestLow[7];           /**< Lowest destination postal code. */
  char DestHigh[7];          /**< Highest destination postal code, or the destination state. */
  char FlatPercent[8];       /**< Flat percentage, decimal text. */
  char BreakPercent[9][8];   /**< Percentage per weight break, decimal texts. */
  char Floor[7];             /**< Minimum charge, decimal text. */
  char HostBytes[2];
} ZipDiscountRecord;

/** One profile: 17897 bytes. "DEF n" names the byte of the DEF record that a field saves. */
typedef struct ProfileRecord {
  char ProfileName[31];      /**< Name and key, compared over all 31 bytes; zero-filled. */
  int32_t ClassMapOn;        /**< Non-zero: ClassMap applies. */
  char ClassMap[18][4];      /**< What each of the first 18 classes is rated as. */
  int16_t SavedSurchargeOn;  /**< DEF 12-13. */
  float SavedFactorLow;      /**< DEF 41-44, a percentage. */
  float SavedFactorHigh;     /**< DEF 256-259, a percentage. */
  int16_t SavedDef179;       /**< DEF 179-180. */
  char SavedDef172[5];       /**< DEF 172-176. */
  char SavedDef181[5];       /**< DEF 181-185. */
  int16_t SavedDef159;       /**< DEF 159-160. */
  char SavedDef150[7];       /**< DEF 150-156. */
  int16_t SavedDef170;       /**< DEF 170-171. */
  char SavedDef161[7];       /**< DEF 161-167. */
  char SavedDef31;           /**< DEF 31. */
  char Reserved1;            /**< 0. */
  int16_t DiscModeP;         /**< Non-zero: the entered discount values are consulted. */
  int16_t DiscModeC;         /**< Non-zero: the discount file's groups are consulted. */
  int16_t DiscModeZ;         /**< Non-zero: ZipDiscounts and an own ZIP table are consulted. */
  float DiscountValues[22];  /**< Two sets of 9 break percentages, flat percentage and floor. */
  ZipDiscountRecord ZipDiscounts[150];
  int32_t ZipDiscountCount;  /**< Entries of ZipDiscounts in use, 0 to 150. */
  int16_t AltSurchargeOn;    /**< Used when SavedSurchargeOn is 0. */
  float AltFactorLow;        /**< Alternative to SavedFactorLow. */
  float AltFactorHigh;       /**< Alternative to SavedFactorHigh. */
  char Reserved2[90];        /**< 0 in a record that the library creates. */
} ProfileRecord;

#pragma pack(pop)
/* clang-format on */

#endif
