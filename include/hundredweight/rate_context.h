/**
 * The shared record of a rating run.
 *
 * The host allocates one RateContext, fills it with zero bytes, sets the directories, the base name
 * of the tariff set and the run switches, and passes it to nearly every function. The library never
 * allocates, copies or frees the record; the blocks and files that hang on it are the library's,
 * and CloseAllFiles releases them. One thread at a time works with a record.
 *
 * The record is packed: fields follow one another without gaps, so members may lie unaligned. Read
 * and write them by value; do not take the address of a number in it. Integers and floats are
 * little-endian, texts 8-bit characters. Weights are pounds, money is dollars, rates are dollars
 * per hundredweight and percentages percent (45.5), unless a comment says otherwise.
 *
 * What the comments say:
 *
 *   host input    written by the host before the call that reads it, and only read by the library
 *   for the host  written by the library, which does not read it
 *   terminated    the text ends at a zero byte within its field
 *   fills         the text may take the whole field without a terminator: print with a precision
 *   XXX file      the tariff set's file of that extension: DataDir, FileBase and ".XXX"
 *
 * The members named HostArea... belong to the host, which may keep anything there: the library
 * neither reads nor writes them. SetHostBytes..., DefHostBytes... and DisHostBytes... are bytes of
 * a file's record that the library carries for the host as they are.
 */
#ifndef HUNDREDWEIGHT_RATE_CONTEXT_H
#define HUNDREDWEIGHT_RATE_CONTEXT_H

#include <hundredweight/abi.h>
#include <hundredweight/engine_interface.h>
#include <hundredweight/profile_record.h>
#include <hundredweight/service_guide_interface.h>
#include <stdint.h>
#include <stdio.h>

/* clang-format off */
#pragma pack(push, 1)

/** One list of weight-break results, ascending by weight, written by RateShipment; 379 bytes. */
typedef struct BreakList {
  int32_t Weights[15];  /**< Weight of each entry in pounds. */
  /** Amount of each entry in the engine's unit. One below the discount's floor (ZmcFloor without
   *  one) is raised to it, one below ZmcMinimum alone to that, cut to a whole number. */
  int32_t Amounts[15];
  char Marks[15][2];    /**< '*' first when the amount was raised to the first floor, else zero. */
  char Labels[15][15];  /**< Printable label, terminated: "MC   500#>". */
  int32_t Count;        /**< Number of entries in use, at most 15. */
} BreakList;

/** The shared record of a rating run: 92473 bytes with 32-bit pointers, 92553 with 64-bit ones. */
typedef struct RateContext {
  /* Handles of the tariff set's files: above 0 when open, -1 when closed, 0 before the first load.
   * OpenAllFiles opens them (all but ZPS and BSV only when UseEngine is 0) and CloseAllFiles closes
   * them; between the two the host may read through them. */
  int32_t Zf1Handle;  /**< ZF1 file, whose data area begins at Zf1DataOffset. */
  int32_t Zf2Handle;  /**< ZF2 file, whose data area begins at Zf2DataOffset. */
  int32_t ZfmHandle;  /**< ZFM file of the Mexican part, whose data area begins at ZfmDataOffset. */
  int32_t AdjHandle;  /**< ADJ file: record i lies at byte 347 x i. */
  char HostArea1[12];
  int32_t FacHandle;  /**< FAC file, whose one record is FacRecord. */
  int32_t RtcHandle;  /**< RTC or RCL file, of which only the presence counts: -1 after a look. */
  int32_t FccHandle;  /**< FCC file, whose one record is FccRecord. */
  int32_t RteHandle;  /**< RTE or RTL file, of which only the presence counts: -1 after a look. */
  int32_t ZpsHandle;  /**< ZPS file, whose one record is ZpsRecord. */
  int32_t BseHandle;  /**< BSE file, whose header and body are BseHeader and BseBody. */
  int32_t BscHandle;  /**< BSC file, whose blocks are BscBlock1 to BscBlock3. */
  char HostArea2[4];
  int32_t BsvHandle;  /**< BSV file, whose one record is BsvRecord. */
  char HostArea3[4];

  /* Streams and tables of the tariff set: null when not loaded. A table is a heap block of a whole
   * file, of no bytes for an empty one; OpenAllFiles reads it for the host (LabStream to McaTable
   * only when UseEngine is 0) and CloseAllFiles frees it. The library interprets no record here. */
  FILE* LabStream;  /**< LAB file, kept open for the reading of blocks; see LabIndex. */
  FILE* LamStream;  /**< LAM file during its load, null afterwards; see LamTable. */
  unsigned char* MchTable;  /**< MCH file and two zero bytes behind it. */
  unsigned char* LaTable;  /**< LA file: LaCount records of 8 bytes. */
  unsigned char* RbaTable;  /**< RBA file: RbaCount records of 16 bytes. */
  /** Minimum charges: McCount records of three int32, from the LMC file, or from the MC file with
   *  its unsigned 16-bit third number widened. */
  unsigned char* McTable;
  unsigned char* McaTable;  /**< The same, McaCount records from the LCA file, or the MCA file. */
  unsigned char* CozTable;  /**< COZ file, read by ReadCOZFile: CozCount records of 6 bytes. */
  int32_t CozCount;  /**< Whole records of CozTable. */
  unsigned char* SzpTable;  /**< SZP file: SzpCount records of 5 bytes. */
  unsigned char* WsmTable;  /**< WSM file behind its header: WsmCount entries of 4 bytes. */
  char HostArea4[90];

  /* Record counts of the tables, written with them, and the error code. A partial record at a
   * file's end does not count. */
  int32_t Zf1Count;  /**< Entries of Zf1Keys and Zf1Entries, 0 to 2800. */
  int32_t Zf2Count;  /**< Entries of Zf2Keys and Zf2Entries, 0 to 2100. */
  int32_t ZfmCount;  /**< Entries of ZfmKeys and ZfmEntries, 0 to 2800. */
  int32_t LabBlockCount;  /**< Entries of LabIndex in use, 0 to 525. */
  int32_t LamCount;  /**< Entries of LamTable in use, 0 to 220. */
  int32_t AdjCount;  /**< Records of the ADJ file and entries of AdjKeys, 0 to 400. */
  int32_t ZmcCount;  /**< Records of the ZMC file, 41 bytes each; 0: nothing to search. */
  int32_t Zp6Count;  /**< Whole records of Zp6Table. */
  int32_t SccCount;  /**< Whole records of SccTable. */
  int32_t LevelCount;  /**< Whole records of LevelTable. */
  int32_t AccCount;  /**< Records in AccRecords, 0 to 100; the host may change it (WriteAccFile). */
  /** Weight columns present in DiscRecord, 0 to 9, set by ReadDiscFile, or by the host of a set
   *  without discount file: how many entries of DiscountBreakPercent the discount list uses. */
  int32_t DiscBreakCount;
  /** Code of the last failure, 0 for none; -1 when the engine refused with a message of its own,
   *  and after GetTerminals. A success does not clear it; the host may. warning() shows it. */
  int32_t ErrorCode;
  char HostArea5[4];
  int32_t Zp7Count;  /**< Whole records of Zp7Table; not changed while there is no ZP7 file. */
  int32_t SzpCount;  /**< Whole records of SzpTable. */
  int32_t WsmCount;  /**< Whole entries of WsmTable. */
  int32_t DchCount;  /**< Whole records of DchTable. */
  int32_t WsmValue;  /**< Number in the WSM file's header of 7 digits; -1 when there is no file. */

  /* Accessorial records and the level table. */
  /** Accessorial items: records of the ACC file, which the host may edit for WriteAccFile. Bytes
   *  2-4 are the item's code, the others the host's; padded with blanks, no terminators. */
  char AccRecords[100][123];
  /** Level file, read by OpenLevelFile for the host: LevelCount records of 18 bytes, of which the
   *  first bears its date in bytes 8-15, YYYYMMDD. Heap block, freed by CloseAllFiles. */
  unsigned char* LevelTable;
  int32_t SetVersion;  /**< The digits among bytes 4-8 of SetRecord as a number; 0 without any. */
  char HostArea6[4];

  /* Outputs of the territory check VerTerritory, for the host. */
  /** 1 when one point has a letter postal code and the other a digit ZIP (and when either first
   *  character is neither); 0 when both are digit ZIPs; kept when both are letter codes. */
  int32_t CrossBorder;
  /** Of two digit ZIPs: 1 when one carries the Mexico marker 'M' as sixth character and UseEngine
   *  is 0, else 0. Kept for other pairs. */
  int32_t MexicoShipment;

  /* Which optional files the set has: 1 or 0, written by OpenAllFiles for the host. */
  int32_t ZpsPresent;  /**< 1 when a ZPS file was opened. */
  int32_t BsvPresent;  /**< 1 when a BSV file was opened. */
  int32_t ZpsSuppressed;  /**< 1 when BSV byte 68 is not a blank; then no ZPS file is looked for. */
  int32_t TrmPresent;  /**< 1 when a TRM file exists (only looked for when a BSV file exists). */
  int32_t SrvPresent;  /**< 1 when an SRV file exists (only looked for when a BSV file exists). */

  /* Engine request options, host input. */
  int32_t EngineOptionOn;  /**< Non-zero: EngineOptionCode is sent to the engine, else 'N'. */
  int32_t ClassWeightsArg;  /**< RateShipment hands it to SetClassesAndWeights, which ignores it. */
  char HostArea7[8];

  /* Minimum charges of the ZMC file by postal-code and rate-code range, written by RateShipment. */
  float ZmcMinimumDollars;  /**< Minimum amount of the last match with one / 100; never cleared. */
  char HostArea8[8];
  /** Minimum amount of the matching record as filed, 100 times ZmcMinimumDollars; 0 when none. Read
   *  for MinChargeText before it is cleared: a host that rates independent shipments sets it to 0
   *  before each. */
  float ZmcMinimum;
  float ZmcFloor;  /**< Floor amount of the matching record / 100; 0 when none. */

  /* The discount list, settled by LoadDiscounts (mode 0), cleared by ClearDiscList, and sent to the
   * engine by RateShipment when DiscountOn is non-zero: percentages from 0 to 99.99. */
  float DiscountFloor;  /**< Minimum charge in dollars; 0 = none. */
  float DiscountFlatPercent;  /**< Flat percentage. */
  float DiscountBreakPercent[9];  /**< Percentage per weight break, lightest first. */

  /* The discount that the host enters for the shipment, host input: decimal texts, 0 when empty,
   * terminated or filling; read by LoadDiscounts when Profile.DiscModeP is non-zero. */
  char EntryDiscountPercent[6];  /**< Percentage of every weight break. */
  char EntryFlatPercent[6];  /**< Flat percentage; not read when NoFlatDiscountFlag is 'Y'. */
  char EntryFloor[7];  /**< Minimum charge in dollars. */

  /** Copy of EngineRateRecord.RateTable, written by RateShipment: 175 int32, of which a negative
   *  one at place i drops weight-break entry i. */
  char EngineRateTable[700];
  char HostArea9[2172];

  /* Positions in the indexed files in bytes, and counts of the rate tables; written with them. */
  int32_t Zf1DataOffset;  /**< Start of the ZF1 file's data area. */
  int32_t Zf1Length;  /**< Length of the ZF1 file. */
  int32_t Zf2DataOffset;  /**< Start of the ZF2 file's data area. */
  int32_t Zf2Length;  /**< Length of the ZF2 file. */
  int32_t ZfmDataOffset;  /**< Start of the ZFM file's data area. */
  int32_t ZfmLength;  /**< Length of the ZFM file. */
  int32_t LaCount;  /**< Whole records of LaTable. */
  int32_t RbaCount;  /**< Whole records of RbaTable. */
  int32_t McCount;  /**< Whole records of McTable. */
  int32_t McaCount;  /**< Whole records of McaTable. */

  /* Where the files are: host input, terminated. Names are appended as they stand. */
  /** Directory of the user's own files, with its last separator: searched first for DEF and MEF,
   *  written to for MEF, and the home of profiles. */
  char UserDir[260];
  /** Directory of the tariff data, with its last separator; also told to the partner libraries. A
   *  file of it whose path is longer than 259 characters counts as missing. */
  char DataDir[260];
  char FileBase[13];  /**< Base name of the tariff set's files, at most 8 characters. */
  char ShipmentOptionA;  /**< Host input: sent unchanged as EngineRateRecord.ShipmentOption. */
  char HostArea10[1];

  /* The tariff's labels and table names, terminated, written by OpenAllFiles for the host. The
   * labels are the BSV file's, 14 characters each, or, when there is a ZPS file, its two of 9. */
  char TariffLabel1[15];  /**< First label. A ZPS label that begins "PARTNER" is "PARTNERSHIP". */
  char TariffLabel2[15];  /**< Second label, alike. */
  char TariffLabel3[15];  /**< Third label; empty with a ZPS file. */
  char TariffLabel4[15];  /**< Fourth label; empty with a ZPS file. */
  char HostArea11[66];
  char TableNames[25][16];  /**< TBL file: its first 25 names; read only when UseEngine is 0. */

  /* The engine's effective tables, and the raw weight-break records. */
  /** EfcCount entries in the engine's order, made by InitializeTolvexdll, searched by
   *  GetCurrentEfcRec. Heap block, freed by CloseAllFiles. */
  EfcRecord* EfcTable;
  int32_t EfcSelection;  /**< The host's; set to 0 when EfcTable is freed to be made anew. */
  /** Records of the WGT file, blank-padded, without terminators: name 0-4, highest weight 5-12,
   *  lowest weight 13-20, decimal texts. Written by ReadWgtFile, read by LoadDiscounts. */
  char WgtRecords[9][21];

  /* Run switches, host input. */
  /** Non-zero: rating goes through the base-rate engine, and OpenAllFiles leaves out the tables
   *  that it replaces; 0: InitializeTolvexdll, EndTolvexdll and RateShipment return 1 at once. */
  int32_t UseEngine;
  /** Non-zero: the service guide is in use; 0: InitializeSGdll, GetTerminals and EndSGdll return 1
   *  and do nothing, GetService clears the three SgValue fields. */
  int32_t UseServiceGuide;

  /* Postal-code tables, blocks as above, and the arrays of the indexed files ZF1, ZF2 and ZFM (read
   * only when UseEngine is 0), for the host. What the entries say is the host's to know. */
  /** ZIP table: Zp6Count records of 12 bytes of the ZP6 file, or of the current profile's own one
   *  (LoadProfileZP6). */
  unsigned char* Zp6Table;
  /** ZP7 file: Zp7Count records of 43 bytes; 43 zero bytes when none is read. */
  unsigned char* Zp7Table;
  unsigned char* DchTable;  /**< DCH file: DchCount records of 25 bytes. */
  uint8_t Zf1Keys[2800][2];  /**< ZF1 file, first array: Zf1Count entries, as in Zf1Entries. */
  uint8_t ZfmKeys[2800][2];  /**< ZFM file, first array: ZfmCount entries, as in ZfmEntries. */
  uint8_t Zf2Keys[2100][2];  /**< ZF2 file, first array: Zf2Count entries, as in Zf2Entries. */
  uint8_t Zf1Entries[2800][3];  /**< ZF1 file, third array. */
  uint8_t ZfmEntries[2800][3];  /**< ZFM file, third array. */
  unsigned char* Zf2Entries;  /**< ZF2 file, third array: a block, entries of 6 bytes. */
  char HostArea12[4];

  /* Fallback files in use: 1 or 0, written by OpenAllFiles when UseEngine is 0, for the host. */
  int32_t RteFallback;  /**< 1 while the RTL file is taken for RTE; 0 again when the load ends. */
  int32_t RtlInUse;  /**< 1 when no RTE file exists and an RTL file does. */
  int32_t RclInUse;  /**< 1 when no RTC file exists and an RCL file does. */
  int32_t RclInUse2;  /**< Always equal to RclInUse. */

  /* Modules of the partner libraries, host input: the host loads and unloads them. */
  void* EngineModule;  /**< The engine's, for GetTolvexAddresses. */
  char HostArea13[4];
  void* ServiceGuideModule;  /**< The service guide's, for GetSGAddresses. */
  char HostArea14[4];

  /* State of the engine's tables; tariff name and date. */
  int32_t ClassWeightsSet;  /**< 1 once SetClassesAndWeights has laid out tables; for the host. */
  char HostArea15[8];
  /** Entries of EfcTable that are searched: those that the engine gave, or 1 when TariffSourceCode
   *  is '2' or NameTablesLoaded is 'Y'. */
  int32_t EfcCount;
  /** Effective tables left out since their name begins "Bureau"; 0 when EfcCount was made 1. */
  int32_t BureauCount;
  char HostArea16[264];
  /** The engine's name of the tariff, 8 characters, terminated: host input, or the answer of
   *  GetTolvexTariffName. A shorter name, or a blank as fourth character, means the standard tables
   *  of SetClassesAndWeights. */
  char TariffName[9];
  /** Date of the level file as MM-DD-YYYY, fills; set by OpenLevelFile, sent as tariff date. */
  char LevelFileDate[10];
  char HostArea17[14];

  /* Engine messages, the state table and the state of profiles and files. */
  /** Host input. Non-zero: RateShipment shows no box, reports an engine status as -1 and leaves
   *  ErrorCode alone where it would store 133. */
  int32_t QuietEngineErrors;
  /** States of the 3-digit ZIP prefixes (United States Postal Service, USPS) from the SC file:
   *  entry i is prefix i + 1, two letters and the attribute bytes A and B, which GetStateCode hands
   *  on. State "YY" is out of scope, "XX" none. First byte 0: not loaded. */
  uint8_t ScTable[999][4];
  char HostArea18[21];
  int32_t WeightBreakTotal;  /**< Weight breaks before the DEF record cuts the list, 0 to 20. */
  char HostArea19[8];
  /** 1 when LoadProfileSettings switched DiscountOn from non-zero to 0, else 0; for the host. */
  int32_t ProfileTurnedOff;
  char HostArea20[16];
  int32_t MexicoFilesLoaded;  /**< 1 when OpenAllFiles read both MEF and MET, else 0. */
  char HostArea21[56];
  char BilledWeightCopy[7];  /**< Copy of BilledWeightText, for the host. */
  /** 'Y' when OpenAllFiles read the CBS and CMT files, so that RateShipment looks the tariff up by
   *  postal codes; 'N' when it did not, or by the host, which then names the tariff. */
  char NameTablesLoaded;
  char HostArea22[1];
  int32_t WgtLoaded;  /**< 1 when OpenAllFiles read the WGT file, whose weight breaks then hold. */
  /** Record numbers in AccRecords of the items of code "232", from 0, then -1; for the host. */
  int32_t Acc232Index[100];
  int32_t Acc218Index[100];  /**< The same of the items of code "218". */

  /* The settings, defaults and discount records of the tariff set. Text is blank-padded. */
  /** The SET record of the tariff set: 283 bytes, read by OpenAllFiles. Flags that it brings to 'Y'
   *  or 'N' are marked *; any other character than 'Y' becomes 'N'. Bytes 4-8: SetVersion. */
  union {
    char SetRecord[283];
    HWT_OVERLAY struct {
      char SetHostBytes1[163];
      /** 163-167: ZIP digits that count, decimal text: 3, 5 or 6, which also counts 5. */
      char ZipLength[5];
      char LabFilesFlag;         /**< 168: 'Y': LAB, LAM and ADJ are read. */
      char SetHostBytes2[5];
      char Zp7FileFlag;          /**< 174: 'N': no ZP7 file is read. */
      char SetHostBytes3[22];
      char AccFileFlag;          /**< 197*: 'Y': the ACC file is read. */
      char SetHostBytes4;
      char NoBaseTablesFlag;     /**< 199*: 'Y': FAC, BSE, ZF1, LA, RBA, MC and MCA are not read. */
      char SetHostBytes5;
      char OptionFlag3;          /**< 201*: for the host. */
      char SetHostBytes6;
      char McaFileFlag;          /**< 203*: 'Y': the LCA or MCA table is read. */
      char SetHostBytes7;
      char OptionFlag5;          /**< 205*: for the host. */
      char SetHostBytes8;
      /** 207*: 'Y': no ZP6, ZF2, BSC and FCC; no letter postal codes. An SCC file makes it 'N'. */
      char SkipZipTablesFlag;
      char SetHostBytes9;
      char NoBseFlag;            /**< 209*: 'N': the BSE file is read. */
      char SetHostBytes10;
      char OptionFlag8;          /**< 211*: for the host. */
      char SetHostBytes11;
      char OptionFlag9;          /**< 213*: for the host. */
      char SetHostBytes12;
      char TariffSourceCode;     /**< 215: '2': one effective table; 'N': states from own tables. */
      char SetHostBytes13[18];
      /** 234: 'Y', as filed or by the host: the surcharge is a share of the gross charge, else of
       *  gross less discount. */
      char SurchargeOnGross;
      char SetHostBytes14[20];
      char SetByte255[4];        /**< 255-258: sent to the service guide. */
      char SetHostBytes15;
      char SetByte260;           /**< 260: '1' sends 'A' to the service guide, else 'B'. */
      char SetHostBytes16[9];
      char NoFlatDiscountFlag;   /**< 270: 'Y': flat discount percentages count as 0. */
      char SetHostBytes17[12];
    };
  };

  /** The user's DEF record: 348 bytes, read by ReadDefFile, edited by the host, restored from a
   *  profile by LoadProfileSettings (marked *) and written back by WriteDefFile. */
  union {
    char DefRecord[348];
    HWT_OVERLAY struct {
      char DefHostBytes1[6];
      int16_t DefModeP1;         /**< 6-7*: Profile.DiscModeP, for the host. */
      int16_t DefModeP2;         /**< 8-9*: Profile.DiscModeP, for the host. */
      int16_t ConversionOn;      /**< 10-11: non-zero: ConversionRate multiplies the rate factor. */
      int16_t SurchargeOn;       /**< 12-13*: non-zero: a surcharge is computed. */
      char DefHostBytes2[2];
      int16_t DiscountOn;        /**< 16-17*: non-zero: discounts apply. */
      char DefHostBytes3[13];
      char DefByte31;            /**< 31*: sent to the engine with the discounts. */
      char DefHostBytes4;
      char DefModeCFlag;         /**< 33*: 'M' for Profile.DiscModeC, else 'N'; for the host. */
      char DefHostBytes5;
      float ConversionRate;      /**< 35-38: currency conversion rate. */
      char DefHostBytes6[2];
      float DefFactorLow;        /**< 41-44*: surcharge percentage below the surcharge break. */
      /** 45-48: factor on the rates; 0 and 1 mean none. The engine is sent this, or its product with
       *  ConversionRate, as five digits of ten-thousandths, 0.0001 to 9.9999: one above 0.00005 and
       *  below 9.99995, rounded. Of any other it is sent the first five characters, which say 1 for
       *  10: a host refuses it (code 513). */
      float RateFactor;
      char DefHostBytes7[101];
      /** 150-185*: settings of the host that profiles save, all but 157-158, 168-169, 177-178. */
      char DefSavedBytes[36];
      char DefHostBytes8[66];
      int16_t DefModeP3;         /**< 252-253*: Profile.DiscModeP, for the host. */
      int16_t DefModeZ;          /**< 254-255*: non-zero: Profile.ZipDiscounts are searched. */
      float DefFactorHigh;       /**< 256-259*: surcharge percentage from the surcharge break on. */
      int16_t DefLayoutMark;     /**< 260-261: 0 in a file of the earlier layout, 1 once read. */
      /** 262-265: index of the surcharge weight break, from 0; ASCII digits, terminated or
       *  blank-padded. */
      char DefBreakIndex[4];
      int16_t ProfileIndex;      /**< 266-267: record number of Profile, from GetProfileRecord. */
      /** 268-271: weight breaks from DefBreakIndex on that stay in use, all behind them being cut;
       *  ASCII digits, first byte 0 = no cut. */
      char DefBreakCount[4];
      char ProfileFileCurrent;   /**< 272: 'Y' once ReadProfileFile found the current layout. */
      char DefHostBytes9[75];
    };
  };

  /** The DIS record: 605 bytes, read by ReadDiscFile. Numbers are decimal text, 0 when blank. */
  union {
    char DiscRecord[605];
    HWT_OVERLAY struct {
      int16_t DisMethod;         /**< 0-1: LoadProfileSettings puts 2 when DiscModeC is on. */
      char DisHostBytes1[86];
      /** 88: how a shipment chooses its group. '1': always 0. '2': 0 for direct service (code 'D')
       *  at both points, else 1. '3': 0 within one state, else 1. '4': 0 and 1 for direct service
       *  within one state and across, else 2 and 3. '5': 2 and 0, else 3 and 1. Others: 0. */
      char DisGroupSelector;
      char DisHostBytes2[23];
      /** 112-336: weight columns; byte 0 not blank or 0 when present, bytes 11 on the lowest weight
       *  in pounds, the others the host's. The first that is not present ends them. */
      char DisWeightColumns[9][25];
      /** 337-604: discount groups: 9 percentages of 6 characters, one per weight column; the flat
       *  percentage, 6; the minimum charge in dollars, 7. LoadProfileSettings writes all four. */
      char DisColumns[4][67];
    };
  };
  char HostArea23[16];

  /* The origin point, then the destination point: 44 bytes each, laid out alike. Host input, but
   * for what RateShipment takes from the engine's answer: states and service codes. On most engine
   * statuses it fills states and cities with blanks, to be entered anew. */
  /** Postal code, terminated: a ZIP of five digits (USPS), the same and 'M' for Mexico, or a letter
   *  postal code of 3 to 6 characters without blank (Canada Post). */
  char OrigZip[7];
  char OrigState[3];  /**< State or province, two letters, terminated. */
  /** City, terminated; its first 17 characters are sent to the engine. "None of the above" means
   *  that none was chosen. */
  char OrigCity[31];
  /** Service code: 'D' is direct, ' ' none. From GetService, or without a guide from the engine. */
  char OrigServiceCode;
  char OrigIntrastate;  /**< 'N': shipments within one state are not served from this origin. */
  char OrigTerritory;  /**< F, B, X or Y is accepted as origin (not X to X), N, T and others not. */
  char DestZip[7];  /**< Postal code, in the forms of OrigZip. */
  char DestState[3];  /**< State or province, two letters, terminated. */
  char DestCity[31];  /**< City, as OrigCity. */
  char DestServiceCode;  /**< Service code, as OrigServiceCode. */
  char DestIntrastate;  /**< The host's: the territory check asks for the origin's alone. */
  char DestTerritory;  /**< T, B, X or Y is accepted as destination, N, F and others not. */

  /* Rate code, and what the service guide answered for the two points. */
  /** The engine's rate code without blanks, at least 6 characters, zero-filled, fills; set by
   *  RateShipment, which searches the ZMC file by it. */
  char RateCode[8];
  char HostArea24[8];
  char EngineOptionCode;  /**< Host input: sent to the engine when EngineOptionOn is non-zero. */
  char OrigTerminal[5];  /**< Code of the origin's terminal, fills; zero when there is none. */
  char DestTerminal[5];  /**< Code of the destination's terminal, alike; both from GetService. */
  char SgValueA[4];  /**< First value of the pair, two characters, terminated, from GetService. */
  char SgValueB[4];  /**< Second value, alike. What the values say is the service guide's. */
  char SgValueC[4];  /**< Third value, alike; "00" when the guide left it empty. */

  /* The shipment's eight lines, as VerClass and VerWeight accept them and RateShipment sends them.
   * A line not in use has no weight. */
  /** Freight class, fills. VerClass writes it, except when it admits "FAK" or Profile.ClassMapOn is
   *  set: then it is host input. */
  char LineClass[8][5];
  int32_t LineClassIndex[8];  /**< Entry of ClassTable that the line is rated at, from VerClass. */
  char LineClassMark[8][2];  /**< '*' first when the profile's ClassMap replaced the class, or 0. */
  char LineWeight[8][7];  /**< Weight in pounds, decimal text, fills; 6 characters are sent. */
  int32_t LineWeightIndex[8];  /**< Index of the weight break that holds it, from VerWeight. */

  /* Printable results of RateShipment, right-aligned and padded with blanks, terminated unless a
   * comment says otherwise. The extra line is what the engine adds to the shipment's lines, as a
   * rule the deficit weight that brings a cheaper weight break. */
  char LineRateText[8][10];  /**< Rate of each line, "%9.2f". */
  char LineChargeText[8][15];  /**< Charge of each line, "%11.2f". */
  char HostArea25[5];
  char ExtraWeightText[7];  /**< Weight of the extra line, "%6.0d": blanks when there is none. */
  char ExtraRateText[8];  /**< Rate of the extra line, "%7.2f". */
  char ExtraChargeText[10];  /**< Charge of the extra line, "%9.2f". */
  char TotalWeightText[7];  /**< Weight of the shipment, "%6.0d". */
  char BilledWeightText[7];  /**< Weight that is charged, "%6.0d". */
  char GrossChargeText[15];  /**< Sum of the lines and the extra line, "%11.2f". */
  char DiscountPctText[6];  /**< Discount in percent, 5 characters as the engine gave them. */
  char DiscountAmountText[9];  /**< Discount in dollars as the engine gave it, fills. */
  char HostArea26[16];
  char SurchargeText[10];  /**< Surcharge, "%9.2f"; 0.00 when SurchargeOn is 0. */
  char DiscountFlatText[6];  /**< Flat percentage as entered or filed, fills; from LoadDiscounts. */
  char HostArea27[10];
  char NetChargeText[9];  /**< Gross charge less discount as the engine gave it, fills. */
  char HostArea28[21];
  char MinChargeText[10];  /**< The engine's minimum charge, or ZmcMinimum if more: "%07.2f". */
  char DiscountFloorText[7];  /**< Minimum charge as entered or filed, fills; from LoadDiscounts. */
  char HostArea29[10];
  /** DefBreakIndex - 1 when the billed weight took DefFactorLow, + 1 for DefFactorHigh; written
   *  only when SurchargeOn is non-zero. */
  int32_t SurchargeBreakSide;
  char HostArea30[30];
  /** Source of the discount list, from LoadDiscounts: 'C' discount file, 'P' entered values, 'Z'
   *  the profile's ZipDiscounts; kept when none applies. */
  char DiscountSource;
  char HostArea31[1];

  /* Classes and weight breaks of the tariff, from OpenAllFiles (CLS and WGT files) and then from
   * SetClassesAndWeights, which every RateShipment calls. */
  /** Freight classes, terminated: 5 characters of the CLS file or the engine's 3. The standard list
   *  is the 18 classes of the National Motor Freight Classification (NMFC), "500" down to "50",
   *  where "92" and "77" stand for 92.5 and 77.5. */
  char ClassTable[20][6];
  int32_t ClassCount;  /**< Entries of ClassTable in use. */
  /** Printable names, terminated: 5 characters of the WGT file, "500#>" for an engine's break from
   *  500 pounds on, or "L5C" to "M40M" for the standard breaks. "XXX" stands behind the last break
   *  in use of a list that was cut. */
  char WeightBreakName[20][11];
  /** Highest weight of each break in pounds, inclusive; 9999999 is no limit. The engine's breaks
   *  end where the next begins; the first that holds a weight is taken. */
  int32_t WeightBreakMax[20];
  int32_t WeightBreakMin[20];  /**< Lowest weight of each break in pounds, inclusive. */
  int32_t WeightBreakCount;  /**< Number of weight breaks in use. */

  /** Weight-break results of RateShipment: the first list is "MC", the second "SS". Of the others
   *  the third's and the fifth's count are set to the second's; all else there is the host's. */
  BreakList BreakLists[5];
  char HostArea32[379];

  /* Version texts of the engine, written by InitializeTolvexdll for the host; they fill, and the
   * bytes behind a shorter text stay as they were. */
  char EngineVersionA[20];  /**< EngineVersionBlock.TextA. */
  char EngineVersionB[8];  /**< TextB in 3 characters and TextC in 5. */
  char EngineVersionC[8];  /**< TextD in 3 characters and TextE in 5. */
  char EngineVersionD[24];  /**< TextF. */
  char HostArea33[9];

  /* Records and buffers of the tariff files, read by OpenAllFiles; all but SCC, ZPS and BSV only
   * when UseEngine is 0. Raw bytes for the host unless a comment says what they are. */
  /** States of letter postal codes by their first three characters, for Canada the forward
   *  sortation areas (FSA) of Canada Post: SccCount records of the SCC file, state or province in 2
   *  bytes, lowest and highest prefix in 3 each, ascending. Heap block, freed by CloseAllFiles. */
  unsigned char* SccTable;
  char HostArea34[24];
  char McConvertIn[10];  /**< Scratch: the last record of the MC file before widening. */
  char McaConvertIn[10];  /**< Scratch: the last record of the MCA file before widening. */
  char McConvertOut[12];  /**< Scratch: the last record of the MC file after widening. */
  char McaConvertOut[12];  /**< Scratch: the last record of the MCA file after widening. */
  char FacRecord[802];  /**< FAC file. */
  char FccRecord[1352];  /**< FCC file. */
  /** Header of the BSE file when SetVersion is 22 or more; bytes 32-35 are the offset of its body
   *  in the file, 36-39 the body's length in bytes, both int32. */
  char BseHeader[1144];
  char BseHeaderOld[1044];  /**< Header of the BSE file when SetVersion is below 22, alike. */
  char BscBlock1[16];  /**< BSC file, bytes 0-15. */
  char BscBlock2[30];  /**< BSC file, bytes 16-45. */
  char BscBlock3[50];  /**< BSC file, bytes 46-95. */
  char BseBody[336];  /**< Body of the BSE file, as long as its header says. */
  char LabLine[72];  /**< Line read last from the LAB file, terminated, with its line end. */
  /** Blocks of 20 lines of the LAB file: characters 5-9 of the block's last line as key ("ZZZZZ"
   *  in the last entry), then the int32 position of the block in the file. */
  char LabIndex[525][9];
  char LamLine[11];  /**< Line read last from the LAM file, terminated. */
  char LamTable[220][9];  /**< LAM file: a key of 6 characters and its value of 3, both fill. */
  char AdjRecord[347];  /**< Record read last from the ADJ file. */
  char AdjKeys[400][3];  /**< First 3 bytes of each record of the ADJ file, in file order. */
  unsigned char* ZpsRecord;  /**< ZPS file, heap block of 628 bytes, zero without one. */
  char BsvRecord[75];  /**< BSV file, '*' at the end of a label replaced by a blank. */
  char HostArea35[18];
  char ZmcRecord[41];  /**< Record of the ZMC file that RateShipment compared last. */

  /** The current profile, as in PROFILE.FIL: loaded by GetProfileRecord, or host input. */
  ProfileRecord Profile;

  /* Terminals of the two points, from GetTerminals, for the host; all zero when it found none. */
  TerminalRecord OrigTerminalRecord;  /**< Terminal that serves the origin. */
  TerminalRecord DestTerminalRecord;  /**< Terminal that serves the destination. */

  /* Records of the Mexican part of the tariff set, from OpenAllFiles, the host's to interpret. */
  char MefRecord[350];  /**< Defaults, which the host may edit for WriteMexicoDefFile. */
  char MetRecord[283];  /**< Settings. */

  /* Alternatives that the engine offers when it cannot place a point, from RateShipment, for the
   * host. */
  char EngineListHeader[6];  /**< Header of the engine's list, fills. */
  int32_t EngineListCount;  /**< Entries of EngineList in use, 0 to 25; 0 when none were fetched. */
  EngineAlternative EngineList[25];  /**< The alternatives; EngineByte is not copied. */
  char HostArea36[3];
  char ProfilesInDataDir;  /**< Host input: 'Y': profile files live in DataDir, not in UserDir. */
  char HostArea37[12];
  /** Host input: 'Y': GetService and GetTerminals clear terminal codes that begin with "XXX". */
  char BlankUnknownTerminals;
} RateContext;

#pragma pack(pop)
/* clang-format on */

#endif
