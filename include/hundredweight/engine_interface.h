/**
 * What the library exchanges with a base-rate engine, the partner library that the host loads.
 *
 * The records are wire formats: packed, little-endian, texts in fixed columns without terminators,
 * padded with blanks. "In" fields are written by the library, "out" fields by the engine.
 */
#ifndef HUNDREDWEIGHT_ENGINE_INTERFACE_H
#define HUNDREDWEIGHT_ENGINE_INTERFACE_H

#include <hundredweight/abi.h>
#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** An effective table: a tariff name and the date from which its rates hold. 17 bytes. */
typedef struct EfcRecord {
  char TariffName[8];
  char DatePart1[4];         /**< First part of the date. */
  char DatePart2[2];         /**< Second part of the date. */
  char DatePart3[2];         /**< Third part of the date. */
  char EngineByte;           /**< The engine's own; the library does not interpret it. */
} EfcRecord;

/** Classes and weight breaks of a tariff: 204 bytes. */
typedef struct EngineTablesSection {
  char ClassCodes[20][6];    /**< The first 3 characters, up to a terminator, are the code. */
  int32_t WeightBreaks[20];  /**< Lowest weight of each break in pounds, ascending. */
  int16_t ClassCount;
  int16_t WeightBreakCount;
} EngineTablesSection;

/** A request for the tables of a tariff without rating anything: 222 bytes. */
typedef struct EngineTablesRecord {
  EngineTablesSection Tables; /**< Out. */
  char TariffName[8];         /**< In. */
  char TariffDate[10];        /**< In: MM-DD-YYYY. */
} EngineTablesRecord;

/** The engine's version texts, each ending at its first zero byte: 108 bytes, out. */
typedef struct EngineVersionBlock {
  char TextA[20];
  char TextB[3];
  char TextC[5];
  char EngineBytes[48];
  char TextD[3];
  char TextE[5];
  char TextF[24];
} EngineVersionBlock;

/** One class line of a rate request: 30 bytes. */
typedef struct EngineClassLine {
  char Kind[2];              /**< In: "02". */
  char ClassCode[3];         /**< In. */
  char Weight[6];            /**< In: pounds, right-aligned, padded with '0'. */
  char Rate[7];              /**< Out: rate per hundredweight, decimal text. */
  char Charge[9];            /**< Out: charge of the line, decimal text. */
  char LineEnd[2];           /**< In: CR LF. */
  char Blank;
} EngineClassLine;

/** Ten discount percentages: the flat one, then one per weight break; 54 bytes. */
typedef struct EngineDiscountLine {
  char Tag[2];               /**< In: "D%" or "I%". */
  char Values[10][5];        /**< In: a blank and the percentage times 100 in 4 digits. */
  char LineEnd[2];           /**< In: CR LF, or as it was. */
} EngineDiscountLine;

/** A rate request and its answer: 2160 bytes. */
typedef struct EngineRateRecord {
  char StartMark;            /**< In: 'F'. */
  char LineKind[2];          /**< In: "01". */
  char Status[4];            /**< Out: blanks or "9999" for none, else a 4-digit status code. */
  char RequestKind[4];       /**< In: " MF1". */
  char TariffName[8];        /**< In. */
  char OptionCode;           /**< In: the host's option, or 'N'. */
  char TariffDate[10];       /**< In: MM-DD-YYYY. */
  char OrigZip[6];           /**< In. */
  char OrigState[2];         /**< In and out: "**" when no origin city was chosen. */
  char OrigCity[17];         /**< In and out. */
  char DestZip[6];           /**< In. */
  char DestState[2];         /**< In and out: "**" when no destination city was chosen. */
  char DestCity[17];         /**< In and out. */
  char RequestCode[2];       /**< In: two digits of the host's choosing. */
  char EngineBytes1[8];
  char RateCode[11];         /**< Out. */
  char TotalWeight[6];       /**< Out: pounds, digits. */
  char BilledWeight[6];      /**< Out: pounds, digits. */
  char MinChargeFirst[7];    /**< Out: first minimum-charge amount, decimal text. */
  char ExtraRate[7];         /**< Out: rate of the extra line, decimal text. */
  char ExtraWeight[6];       /**< Out: weight of the extra line, digits. */
  char ExtraCharge[9];       /**< Out: charge of the extra line, decimal text. */
  char NetCharge[9];         /**< Out. */
  char EngineBytes2[26];
  char ShipmentOption;       /**< In. */
  char EngineBytes3[16];
  char DiscountsSent;        /**< In: 'Y' when the discount lines are sent, else 'N'. */
  char EngineByte4;
  char OrigServiceCode;      /**< Out. */
  char DestServiceCode;      /**< Out. */
  char EngineBytes5[16];
  char DiscountOption;       /**< In, when the discount lines are sent. */
  char EngineBytes6[5];
  char DiscountAmount[9];    /**< Out. */
  char MinChargeSecond[7];   /**< Out: second minimum-charge amount, decimal text. */
  char Factor[5];            /**< In: rate factor times 10000, digits. */
  char DiscountPercent[5];   /**< Out. */
  char EngineBytes7[17];
  char LineEnd[2];           /**< In: CR LF. */
  EngineClassLine ClassLines[20];    /**< The first 8 are the shipment's, the others blank. */
  EngineDiscountLine DiscountLine;   /**< "D%". */
  EngineDiscountLine IncreaseLine;   /**< "I%": the same values; its line end is not written. */
  char Blanks1[3];           /**< In. */
  char RateTable[700];       /**< Out: int32 entries; a negative one drops its break entry. */
  EngineTablesSection Tables;        /**< Out. */
  char BreakKinds[30];       /**< Out: '1' for the "MC" list, else the "SS" list. */
  char EngineBytes8[2];
  int32_t BreakWeights[30];  /**< Out: weight of each weight-break entry. */
  int32_t BreakAmounts[30];  /**< Out: amount of each weight-break entry. */
  int16_t Zero;              /**< In. */
  int16_t BreakEntryCount;   /**< Out: number of weight-break entries. */
  char Blanks2[3];           /**< In. */
  char EndMark;              /**< In: '*'. */
} EngineRateRecord;

/** Third argument of a first rate call: 976 bytes. */
typedef struct EngineResultBlock {
  int32_t Capacity;          /**< In: 960, the size of Data. */
  int32_t Verdict;           /**< Out: -1 when the engine could not rate. */
  int16_t NoAlternatives;    /**< Out: 0 when alternatives may be fetched. */
  char EngineBytes[6];
  char Data[960];            /**< The engine's own. */
} EngineResultBlock;

/** A point that the engine offers instead of one that it could not place: 20 bytes. */
typedef struct EngineAlternative {
  char Code[2];
  char Text[17];
  char EngineByte;
} EngineAlternative;

/** Third argument of a second rate call, which asks for alternatives: 816 bytes. */
typedef struct EngineListBlock {
  int32_t Capacity;          /**< In: 800, the size of Entries. */
  int32_t Count;             /**< Out: number of entries, or -1 when there is no answer. */
  char EngineBytes[2];
  char Header[6];            /**< Out. */
  EngineAlternative Entries[40];     /**< Out. */
} EngineListBlock;

#pragma pack(pop)
/* clang-format on */

/** Starts an engine on a data directory. Result: the handle that every other call takes. */
typedef void*(HWT_CALL* Tolvex_InitializeTolvexExFunction)(const char* data_directory);
/** Points a running engine at a data directory. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_Set_TolvexdataExFunction)(void* handle,
                                                           const char* data_directory);
/** Fills the tables of the record's tariff and date. Result: 0 on failure. */
typedef int32_t(HWT_CALL* Tolvex_GetTablesExFunction)(void* handle, EngineTablesRecord* record);
/** Fills the version texts. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_disp_verExFunction)(void* handle, EngineVersionBlock* block);
/** Ends an engine. Result: 0 on success. */
typedef int32_t(HWT_CALL* Tolvex_EndTolvexExFunction)(void* handle);
/** Rates the record; the block is an EngineResultBlock, or an EngineListBlock to ask for
 *  alternatives. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_RateShipment2ExFunction)(void* handle, EngineRateRecord* record,
                                                          void* block);
/** Result: the effective table of an index from 0, usually in the buffer given; null on failure. */
typedef EfcRecord*(HWT_CALL* Tolvex_GetEffectiveTableExFunction)(void* handle, EfcRecord* buffer,
                                                                 int32_t index);
/** Result: number of effective tables, in the low 16 bits. */
typedef int32_t(HWT_CALL* Tolvex_GetEffectiveTableSizeExFunction)(void* handle);
/** Replaces the 4-character status code in a 90-byte buffer by its message. Result: the message,
 *  null when there is none. */
typedef char*(HWT_CALL* Tolvex_GetErrorStringExFunction)(void* handle, char* buffer);
/** Writes the two letters of a postal code's state. Result: 0 when there is none. */
typedef int32_t(HWT_CALL* Tolvex_GetStateExFunction)(void* handle, char* state,
                                                     const char* postal_code);

#endif
