/**
 * What the library exchanges with a base-rate engine, the partner library that the host loads.
 *
 * The records are wire formats: packed, little-endian, texts in fixed columns without terminators,
 * padded with blanks. "In" fields are written by the library, "out" fields by the engine; "in and
 * out" ones by both. Members named EngineByte... are the engine's own: the library sends blanks in
 * a rate record and zeros elsewhere, and does not read them. Amounts of money are dollars, weights
 * pounds, rates dollars per hundredweight, unless a comment says otherwise.
 */
#ifndef HUNDREDWEIGHT_ENGINE_INTERFACE_H
#define HUNDREDWEIGHT_ENGINE_INTERFACE_H

#include <hundredweight/abi.h>
#include <stdint.h>

/* clang-format off */
#pragma pack(push, 1)

/** An effective table: a tariff name and the date from which its rates hold; 17 bytes, out. The
 *  library compares the date's parts and does not interpret them. */
typedef struct EfcRecord {
  char TariffName[8];        /**< Records whose name begins with "Bureau" are left out. */
  char DatePart1[4];         /**< First part of the date. */
  char DatePart2[2];         /**< Second part of the date. */
  char DatePart3[2];         /**< Third part of the date. */
  char EngineByte;
} EfcRecord;

/** Classes and weight breaks of a tariff: 204 bytes, out. For a tariff that rates freight of all
 *  kinds ("FAK" first) the library puts the classes of the National Motor Freight Classification
 *  (NMFC) over those of a rate record. */
typedef struct EngineTablesSection {
  char ClassCodes[20][6];    /**< The first 3 characters, up to a terminator, are the code. */
  int32_t WeightBreaks[20];  /**< Lowest weight of each break in pounds, ascending. */
  int16_t ClassCount;        /**< Entries of ClassCodes in use; the library reads at most 20. */
  int16_t WeightBreakCount;  /**< Entries of WeightBreaks in use; the library reads at most 20. */
} EngineTablesSection;

/** A request for the tables of a tariff without rating anything: 222 bytes. */
typedef struct EngineTablesRecord {
  EngineTablesSection Tables; /**< Out. */
  char TariffName[8];         /**< In: RateContext.TariffName. */
  char TariffDate[10];        /**< In: MM-DD-YYYY, RateContext.LevelFileDate. */
} EngineTablesRecord;

/** The engine's version texts, each ending at its first zero byte, which may lie in a text behind
 *  it: 108 bytes, out. They go to RateContext.EngineVersionA to EngineVersionD. */
typedef struct EngineVersionBlock {
  char TextA[20];            /**< To EngineVersionA. */
  char TextB[3];             /**< To EngineVersionB, from its start. */
  char TextC[5];             /**< To EngineVersionB, behind the first 3 bytes. */
  char EngineBytes[48];
  char TextD[3];             /**< To EngineVersionC, from its start. */
  char TextE[5];             /**< To EngineVersionC, behind the first 3 bytes. */
  char TextF[24];            /**< To EngineVersionD. */
} EngineVersionBlock;

/** One class line of a rate request: 30 bytes. Before the call the out fields are zero bytes. */
typedef struct EngineClassLine {
  char Kind[2];              /**< In: "02". */
  char ClassCode[3];         /**< In: freight class, padded with zero bytes. */
  char Weight[6];            /**< In: pounds, right-aligned, padded with '0'; 0: line not in use. */
  char Rate[7];              /**< Out: dollars per hundredweight, decimal text. */
  char Charge[9];            /**< Out: dollars, decimal text. */
  char LineEnd[2];           /**< In: CR LF. */
  char Blank;                /**< In: ' '. */
} EngineClassLine;

/** Ten discount percentages: the flat one, then one per weight break; 54 bytes. */
typedef struct EngineDiscountLine {
  char Tag[2];               /**< In: "D%" or "I%"; without discounts as it was. */
  /** In: a blank and the percentage times 100 in 4 digits, so that " 4550" is 45.5 percent; all
   *  blanks without discounts. " 9999" ends the list where the DEF record cuts the breaks. */
  char Values[10][5];
  char LineEnd[2];           /**< In: CR LF, or as it was. */
} EngineDiscountLine;

/** A rate request and its answer: 2160 bytes. A process has one, filled with blanks when the engine
 *  starts; RateShipment writes it and reads the answer from it. */
typedef struct EngineRateRecord {
  char StartMark;            /**< In: 'F'. */
  char LineKind[2];          /**< In: "01". */
  char Status[4];            /**< Out: blanks or "9999" for none, else a 4-digit status code. */
  char RequestKind[4];       /**< In: " MF1". */
  char TariffName[8];        /**< In: RateContext.TariffName. */
  char OptionCode;           /**< In: the host's EngineOptionCode, or 'N'. */
  char TariffDate[10];       /**< In: MM-DD-YYYY, RateContext.LevelFileDate. */
  char OrigZip[6];           /**< In: origin postal code. */
  char OrigState[2];         /**< In and out: "**" when no origin city was chosen. */
  char OrigCity[17];         /**< In and out: "None of the above" when none was chosen. */
  char DestZip[6];           /**< In: destination postal code. */
  char DestState[2];         /**< In and out: "**" when no destination city was chosen. */
  char DestCity[17];         /**< In and out: "None of the above" when none was chosen. */
  char RequestCode[2];       /**< In: two digits of the host's choosing. */
  char EngineBytes1[8];
  char RateCode[11];         /**< Out: may hold blanks and zero bytes, which do not count. */
  char TotalWeight[6];       /**< Out: pounds, digits. */
  char BilledWeight[6];      /**< Out: pounds, digits. */
  char MinChargeFirst[7];    /**< Out: first minimum-charge amount, dollars, decimal text. */
  char ExtraRate[7];         /**< Out: rate of the extra line (deficit weight), decimal text. */
  char ExtraWeight[6];       /**< Out: weight of the extra line in pounds, digits. */
  char ExtraCharge[9];       /**< Out: charge of the extra line in dollars, decimal text. */
  char NetCharge[9];         /**< Out: dollars as the host prints them. */
  char EngineBytes2[26];
  char ShipmentOption;       /**< In: RateContext.ShipmentOptionA. */
  char EngineBytes3[16];
  char DiscountsSent;        /**< In: 'Y' when the discount lines are sent, else 'N'. */
  char EngineByte4;
  char OrigServiceCode;      /**< Out: service code of the origin. */
  char DestServiceCode;      /**< Out: service code of the destination. */
  char EngineBytes5[16];
  char DiscountOption;       /**< In: RateContext.DefByte31 when the discount lines are sent. */
  char EngineBytes6[5];
  char DiscountAmount[9];    /**< Out: dollars as the host prints them. */
  char MinChargeSecond[7];   /**< Out: second minimum-charge amount, dollars, added to the first. */
  char Factor[5];            /**< In: rate factor times 10000, digits; "10000" for none. */
  char DiscountPercent[5];   /**< Out: percent as the host prints it. */
  char EngineBytes7[17];
  char LineEnd[2];           /**< In: CR LF. */
  EngineClassLine ClassLines[20];    /**< The first 8 are the shipment's, the others blank. */
  EngineDiscountLine DiscountLine;   /**< "D%". */
  EngineDiscountLine IncreaseLine;   /**< "I%": the same values; its line end is not written. */
  char Blanks1[3];           /**< In: blanks. */
  char RateTable[700];       /**< Out: int32 entries; a negative one drops its break entry. */
  EngineTablesSection Tables;        /**< Out: classes and weight breaks of the rated tariff. */
  char BreakKinds[30];       /**< Out: '1' for the "MC" list, else the "SS" list. */
  char EngineBytes8[2];
  int32_t BreakWeights[30];  /**< Out: weight of each weight-break entry in pounds. */
  int32_t BreakAmounts[30];  /**< Out: amount of each entry, in the engine's unit. */
  int16_t Zero;              /**< In: 0. */
  int16_t BreakEntryCount;   /**< Out: number of weight-break entries, at most 30. */
  char Blanks2[3];           /**< In: blanks. */
  char EndMark;              /**< In: '*'. */
} EngineRateRecord;

/** Third argument of a first rate call: 976 bytes, owned by the library. */
typedef struct EngineResultBlock {
  int32_t Capacity;          /**< In: 960, the size of Data. */
  int32_t Verdict;           /**< Out: -1 when the engine could not rate. */
  int16_t NoAlternatives;    /**< Out: 0 when alternatives may be fetched. */
  char EngineBytes[6];
  char Data[960];            /**< The engine's own. */
} EngineResultBlock;

/** A point that the engine offers instead of one that it could not place: 20 bytes, out. */
typedef struct EngineAlternative {
  char Code[2];              /**< State of the point, two letters. */
  char Text[17];             /**< City of the point. */
  char EngineByte;
} EngineAlternative;

/** Third argument of a second rate call, which asks for alternatives: 816 bytes, owned by the
 *  library. */
typedef struct EngineListBlock {
  int32_t Capacity;          /**< In: 800, the size of Entries. */
  int32_t Count;             /**< Out: number of entries, or -1 when there is no answer. */
  char EngineBytes[2];
  char Header[6];            /**< Out: to RateContext.EngineListHeader. */
  EngineAlternative Entries[40];     /**< Out: the first 25 go to RateContext.EngineList. */
} EngineListBlock;

#pragma pack(pop)
/* clang-format on */

/* The ten entry points. Handles come from Tolvex_InitializeTolvexEx; texts passed to the engine are
 * terminated; every buffer and record is the caller's. */

/** Starts an engine on a data directory. Result: the handle that every other call takes; the
 *  library does not test it. */
typedef void*(HWT_CALL* Tolvex_InitializeTolvexExFunction)(const char* data_directory);
/** Points a running engine at a data directory. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_Set_TolvexdataExFunction)(void* handle,
                                                           const char* data_directory);
/** Fills the tables of the record's tariff and date. Result: 0 on failure. */
typedef int32_t(HWT_CALL* Tolvex_GetTablesExFunction)(void* handle, EngineTablesRecord* record);
/** Fills the version texts. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_disp_verExFunction)(void* handle, EngineVersionBlock* block);
/** Ends an engine; its handle is gone. Result: 0 on success. */
typedef int32_t(HWT_CALL* Tolvex_EndTolvexExFunction)(void* handle);
/** Rates the record; the block is an EngineResultBlock, or an EngineListBlock to ask for
 *  alternatives. The library does not read the result. */
typedef int32_t(HWT_CALL* Tolvex_RateShipment2ExFunction)(void* handle, EngineRateRecord* record,
                                                          void* block);
/** Result: the effective table of an index from 0, usually in the buffer given, which is zeroed;
 *  null on failure. */
typedef EfcRecord*(HWT_CALL* Tolvex_GetEffectiveTableExFunction)(void* handle, EfcRecord* buffer,
                                                                 int32_t index);
/** Result: number of effective tables, in the low 16 bits. */
typedef int32_t(HWT_CALL* Tolvex_GetEffectiveTableSizeExFunction)(void* handle);
/** Replaces the 4-character status code in a 90-byte buffer by its message, terminated. Result: not
 *  null when there is one; the library reads the buffer. */
typedef char*(HWT_CALL* Tolvex_GetErrorStringExFunction)(void* handle, char* buffer);
/** Writes the two letters of a postal code's state, without terminator: the buffer may have no more
 *  than 2 bytes. Result: 0 when there is none. */
typedef int32_t(HWT_CALL* Tolvex_GetStateExFunction)(void* handle, char* state,
                                                     const char* postal_code);

#endif
