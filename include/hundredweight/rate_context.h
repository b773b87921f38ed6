/**
 * The shared record of a rating run.
 *
 * The host allocates one RateContext, fills it with zero bytes, sets the directories, the base name
 * of the tariff set and the run switches, and passes it to nearly every function. The record is
 * packed: fields follow one another without gaps, so members may lie unaligned. Read and write them
 * by value; do not take the address of a number in it.
 *
 * Integers and floats are little-endian. Texts are 8-bit characters, terminated or padded with
 * blanks as each field says. The members named HostArea1, HostArea2, ... belong to the host.
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

/** One list of weight-break results, ascending by weight. */
typedef struct BreakList {
  int32_t Weights[15];  /**< Weight of each entry in pounds. */
  int32_t Amounts[15];  /**< Amount of each entry after flooring, in the engine's unit. */
  char Marks[15][2];    /**< '*' first when the entry was raised to the first floor, else zero. */
  char Labels[15][15];  /**< Printable label, terminated: "MC   500#>". */
  int32_t Count;        /**< Number of entries in use, at most 15. */
} BreakList;

typedef struct RateContext {
  /* File handles, streams and tables of the tariff set. A handle is -1 when closed and 0 before the
 * first load; a table is a heap block or null. */
  /** Open handle of the ZF1 indexed file, kept open for random reads; -1 when closed. */
  int32_t Zf1Handle;
  int32_t Zf2Handle;  /**< Open handle of the ZF2 indexed file, kept open; -1 when closed. */
  /** Open handle of the ZFM indexed file (Mexico files only), kept open; -1 when closed. */
  int32_t ZfmHandle;
  /** Open handle of the ADJ file (347-byte records), kept open; -1 when closed. */
  int32_t AdjHandle;
  char HostArea1[12];
  /** Handle of the FAC file (one 802-byte record read at load; kept until CloseAllFiles). */
  int32_t FacHandle;
  int32_t RtcHandle;  /**< Scratch handle for the RTC/RCL presence probe (closed at once). */
  /** Handle of the FCC file (one 1352-byte record read at load; kept until CloseAllFiles). */
  int32_t FccHandle;
  int32_t RteHandle;  /**< Scratch handle for the RTE/RTL presence probe (closed at once). */
  /** Handle of the ZPS file (one 628-byte record read at load; kept until CloseAllFiles). */
  int32_t ZpsHandle;
  /** Handle of the BSE file (header and body read at load; kept until CloseAllFiles). */
  int32_t BseHandle;
  /** Handle of the BSC file (three blocks read at load; kept until CloseAllFiles). */
  int32_t BscHandle;
  char HostArea2[4];
  /** Handle of the BSV file (one 75-byte record read at load; closed by CloseAllFiles). */
  int32_t BsvHandle;
  char HostArea3[4];
  /** Open stream of the LAB file, kept open for block reads; null when closed. */
  FILE* LabStream;
  FILE* LamStream;  /**< Stream of the LAM file during its load; closed when the load ends. */
  unsigned char* MchTable;  /**< Block holding the whole MCH file plus two zero bytes. */
  unsigned char* LaTable;  /**< Block holding the LA file (8-byte records). */
  unsigned char* RbaTable;  /**< Block holding the RBA file (16-byte records). */
  unsigned char* McTable;  /**< Minimum-charge table, 12-byte records (from LMC, or MC widened). */
  /** Minimum-charge table, 12-byte records (from LCA, or MCA widened). */
  unsigned char* McaTable;
  unsigned char* CozTable;  /**< Block holding the COZ file (6-byte records). */
  int32_t CozCount;  /**< Number of COZ records. */
  unsigned char* SzpTable;  /**< Block holding the SZP file (5-byte records). */
  /** Block holding the WSM file after its 7-byte header (4-byte entries). */
  unsigned char* WsmTable;
  char HostArea4[90];

  /* Record counts of the tables, and the error code. */
  /** Entry count N of the ZF1 file (the file's first 2 bytes; upper half zero). */
  int32_t Zf1Count;
  /** Entry count N of the ZF2 file (the file's first 2 bytes; upper half zero). */
  int32_t Zf2Count;
  /** Entry count N of the ZFM file (the file's first 2 bytes; upper half zero). */
  int32_t ZfmCount;
  int32_t LabBlockCount;  /**< Number of entries in LabIndex. */
  int32_t LamCount;  /**< Number of entries in LamTable. */
  int32_t AdjCount;  /**< Number of 347-byte ADJ records (and of AdjKeys entries). */
  int32_t ZmcCount;  /**< Number of 41-byte records in the ZMC file (0 when absent). */
  int32_t Zp6Count;  /**< Number of 12-byte ZP6 records. */
  /** Number of 8-byte entries in the letter-postal-code range table (SCC file size / 8). */
  int32_t SccCount;
  int32_t LevelCount;  /**< Number of 18-byte LVL records. */
  int32_t AccCount;  /**< Number of ACC records held in AccRecords. */
  /** Number of weight columns present in DiscRecord (0-9); set by ReadDiscFile. */
  int32_t DiscBreakCount;
  /** Code of the last failure (see GetErrorText's table: warning() shows its message); 0 = none. */
  int32_t ErrorCode;
  char HostArea5[4];
  int32_t Zp7Count;  /**< Number of 43-byte ZP7 records. */
  int32_t SzpCount;  /**< Number of 5-byte SZP records. */
  int32_t WsmCount;  /**< Number of 4-byte WSM entries. */
  int32_t DchCount;  /**< Number of 25-byte DCH records. */
  int32_t WsmValue;  /**< Number in the WSM file's 7-byte header (-1 when absent). */

  /* Accessorial records and the level table. */
  char AccRecords[100][123];  /**< ACC records, 100 slots of 123 bytes. */
  unsigned char* LevelTable;  /**< Block holding the LVL file (18-byte records). */
  int32_t SetVersion;  /**< Number formed from the digits among bytes 4-8 of the SET record. */
  char HostArea6[4];

  /* Outputs of the territory check. */
  /** Set by VerTerritory: 1 when one point has a letter postal code and the other a digit ZIP
   *  (and when either first character is neither); 0 when both are digit ZIPs. */
  int32_t CrossBorder;
  /** Set by VerTerritory: 1 when either ZIP carries the Mexico marker 'M' in its sixth character
   *  and UseEngine is 0; else 0. */
  int32_t MexicoShipment;

  /* Which optional files the set has. */
  int32_t ZpsPresent;  /**< 1 when a ZPS file was opened. */
  int32_t BsvPresent;  /**< 1 when a BSV file was opened. */
  int32_t ZpsSuppressed;  /**< 1 when BSV byte 68 is not a blank; then no ZPS file is looked for. */
  int32_t TrmPresent;  /**< 1 when a TRM file exists (only looked for when a BSV file exists). */
  int32_t SrvPresent;  /**< 1 when an SRV file exists (only looked for when a BSV file exists). */

  /* Engine request options. */
  /** Non-zero: byte 19 of the engine rate record is taken from EngineOptionCode, else 'N'. */
  int32_t EngineOptionOn;
  /** Handed by the rating run to SetClassesAndWeights as its third argument, which is not read. */
  int32_t ClassWeightsArg;
  char HostArea7[8];

  /* Minimum charges, the discount list and the discount values that the host enters. */
  /** Minimum amount of the last matching ZMC record / 100; only written on a match with a
   *  positive minimum. */
  float ZmcMinimumDollars;
  char HostArea8[8];
  /** Minimum amount of the matching ZMC record as stored; cleared before each lookup. */
  float ZmcMinimum;
  /** Floor amount of the matching ZMC record / 100; cleared before each lookup. */
  float ZmcFloor;
  /** Floor (minimum charge) of the discount chosen for the shipment; 0 = none; first of the three
   *  discount-list fields, which lie back to back and are cleared together. */
  float DiscountFloor;
  float DiscountFlatPercent;  /**< Flat percentage of the chosen discount. */
  float DiscountBreakPercent[9];  /**< Percentage per weight break of the chosen discount. */
  /** Entered discount percentage (host input), applied to every weight break by the entered-
   *  discount source. */
  char EntryDiscountPercent[6];
  char EntryFlatPercent[6];  /**< Entered flat discount percentage (host input). */
  char EntryFloor[7];  /**< Entered discount minimum charge (host input). */

  /* Copy of the engine's rate table. */
  /** Copy of bytes 976-1675 of the engine rate record: int32 entries; a negative entry i drops
   *  weight-break entry i. */
  char EngineRateTable[700];
  char HostArea9[2172];

  /* Positions in the indexed files, and counts of the rate tables. */
  int32_t Zf1DataOffset;  /**< Byte offset of the ZF1 data area (9N+2). */
  int32_t Zf1Length;  /**< Length of the ZF1 file in bytes. */
  int32_t Zf2DataOffset;  /**< Byte offset of the ZF2 data area (12N+2). */
  int32_t Zf2Length;  /**< Length of the ZF2 file in bytes. */
  int32_t ZfmDataOffset;  /**< Byte offset of the ZFM data area (9N+2). */
  int32_t ZfmLength;  /**< Length of the ZFM file in bytes. */
  int32_t LaCount;  /**< Number of 8-byte LA records. */
  int32_t RbaCount;  /**< Number of 16-byte RBA records. */
  int32_t McCount;  /**< Number of 12-byte McTable records. */
  int32_t McaCount;  /**< Number of 12-byte McaTable records. */

  /* Where the files are, and the tariff's labels and table names. */
  /** Directory (with trailing separator) searched first for DEF and MEF files and where MEF files
   *  are written; also the profile directory. */
  char UserDir[260];
  /** Tariff data directory (text, terminated); handed to Tolvex_InitializeTolvexEx and
   *  Tolvex_Set_TolvexdataEx. */
  char DataDir[260];
  /** Base file name of the tariff set (at most 8 characters used), to which an extension is
   *  appended. */
  char FileBase[13];
  /** One character copied unchanged into byte 177 of the engine rate record. */
  char ShipmentOptionA;
  char HostArea10[1];
  char TariffLabel1[15];  /**< First of four 14-character labels (from BSV, or ZPS). */
  char TariffLabel2[15];  /**< Second label (from BSV, or ZPS). */
  char TariffLabel3[15];  /**< Third label (from BSV). */
  char TariffLabel4[15];  /**< Fourth label (from BSV). */
  char HostArea11[66];
  char TableNames[25][16];  /**< Names read from the TBL file, 25 slots of 16 bytes. */

  /* The engine's effective tables, and the raw weight-break records. */
  /** Heap table of 17-byte effective-table records (capacity = engine count + 2); freed and
   *  rebuilt by the effective-table builder, freed by CloseAllFiles. */
  EfcRecord* EfcTable;
  /** Set to 0 whenever EfcTable is released for rebuilding; not otherwise read by the library. */
  int32_t EfcSelection;
  /** Raw WGT records; bytes 13-20 = lowest weight of the break (read by LoadDiscounts host-table
   *  mode). */
  char WgtRecords[9][21];

  /* Run switches that the host sets. */
  /** Non-zero: rating goes through the base-rate engine; zero makes InitializeTolvexdll,
   *  EndTolvexdll and RateShipment return 1 at once. */
  int32_t UseEngine;
  /** Non-zero: the service guide is in use (InitializeSGdll, GetService, GetTerminals, EndSGdll
   *  do nothing when 0). */
  int32_t UseServiceGuide;

  /* Postal-code tables and the arrays of the indexed files. */
  unsigned char* Zp6Table;  /**< Block holding the ZP6 records; replaced by LoadProfileZP6. */
  /** Block holding the ZP7 file (43-byte records); a zeroed 43-byte block when none was read. */
  unsigned char* Zp7Table;
  unsigned char* DchTable;  /**< Block holding the DCH file (25-byte records). */
  uint8_t Zf1Keys[2800][2];  /**< ZF1 first array (N 2-byte entries, N at most 2800). */
  uint8_t ZfmKeys[2800][2];  /**< ZFM first array (N 2-byte entries, N at most 2800). */
  uint8_t Zf2Keys[2100][2];  /**< ZF2 first array (N 2-byte entries, N at most 2100). */
  uint8_t Zf1Entries[2800][3];  /**< ZF1 third array (N 3-byte entries). */
  uint8_t ZfmEntries[2800][3];  /**< ZFM third array (N 3-byte entries). */
  unsigned char* Zf2Entries;  /**< Block of the ZF2 third array (N 6-byte entries). */
  char HostArea12[4];

  /* Fallback files in use. */
  /** Set to 1 while the RTL fallback is taken; cleared at the end of OpenAllFiles. */
  int32_t RteFallback;
  int32_t RtlInUse;  /**< 1 when no RTE file exists and an RTL file does. */
  int32_t RclInUse;  /**< 1 when no RTC file exists and an RCL file does. */
  int32_t RclInUse2;  /**< Second copy of RclInUse, set together with it. */

  /* Modules that the host has loaded. */
  /** Module handle of the engine library, loaded by the host; GetTolvexAddresses resolves the
   *  engine functions from it. */
  void* EngineModule;
  char HostArea13[4];
  /** Module handle of the service-guide library, set by the host; GetSGAddresses resolves the
   *  ServGd_ entry points from it. */
  void* ServiceGuideModule;
  char HostArea14[4];

  /* State of the engine's tables; tariff name and date. */
  /** Set to 1 once the class and weight tables have been laid for the rated tariff. */
  int32_t ClassWeightsSet;
  char HostArea15[8];
  /** Number of EfcTable entries in use (1 when TariffSourceCode is '2' or NameTablesLoaded is
   *  'Y'). */
  int32_t EfcCount;
  /** Number of engine effective-table records skipped because their first 6 characters are
   *  "Bureau" (0 when EfcCount was forced to 1). */
  int32_t BureauCount;
  char HostArea16[264];
  /** 8-character engine tariff name, terminated; unusable (8 blanks, blank 4th char, shorter than
   *  8) selects the standard tables. */
  char TariffName[9];
  /** Date of the level file as MM-DD-YYYY, ten characters without terminator. */
  char LevelFileDate[10];
  char HostArea17[14];

  /* Engine messages, the state table and the state of profiles and files. */
  /** Non-zero: engine failures give error code -1 (never 133) and no warning box; set by the
   *  host. */
  int32_t QuietEngineErrors;
  /** The SC file: entry i belongs to the 3-digit ZIP prefix i + 1 and holds a state code of two
   *  letters and the attribute bytes A and B; first byte 0 = not loaded. */
  uint8_t ScTable[999][4];
  char HostArea18[21];
  int32_t WeightBreakTotal;  /**< Number of weight breaks before the DEF override cuts the list. */
  char HostArea19[8];
  /** Set by LoadProfileSettings: 1 when the load switched DiscountOn from non-zero to 0, else 0. */
  int32_t ProfileTurnedOff;
  char HostArea20[16];
  int32_t MexicoFilesLoaded;  /**< 1 when both the MEF and the MET file were read. */
  char HostArea21[56];
  char BilledWeightCopy[7];  /**< Copy of BilledWeightText. */
  /** 'Y' when the CBS and CMT tables were loaded by the tariff load, else 'N'. */
  char NameTablesLoaded;
  char HostArea22[1];
  /** Non-zero: weight breaks came from the WGT file; SetClassesAndWeights leaves them alone. */
  int32_t WgtLoaded;
  /** Record numbers of the AccRecords whose bytes 2-4 are "232"; -1 = no entry. */
  int32_t Acc232Index[100];
  /** Record numbers of the AccRecords whose bytes 2-4 are "218"; -1 = no entry. */
  int32_t Acc218Index[100];

  /* The settings, defaults and discount records of the tariff set. */
  /** The SET record of the tariff set: 283 bytes, copied whole; the bytes not named here are the
   *  host's. A flag is 'Y' or 'N' once OpenAllFiles has read the record. */
  union {
    char SetRecord[283];
    HWT_OVERLAY struct {
      char SetHostBytes1[163];
      char ZipLength[5];         /**< 163-167: significant postal-code length, decimal text. */
      char LabFilesFlag;         /**< 168: 'Y': LAB, LAM and ADJ are read. */
      char SetHostBytes2[5];
      char Zp7FileFlag;          /**< 174: 'N': no ZP7 file is read. */
      char SetHostBytes3[22];
      char AccFileFlag;          /**< 197: 'Y': the ACC file is read. */
      char SetHostBytes4;
      char NoBaseTablesFlag;     /**< 199: 'Y': FAC, BSE, ZF1, LA, RBA, MC and MCA are not read. */
      char SetHostBytes5;
      char OptionFlag3;          /**< 201: for the host. */
      char SetHostBytes6;
      char McaFileFlag;          /**< 203: 'Y': the LCA or MCA table is read. */
      char SetHostBytes7;
      char OptionFlag5;          /**< 205: for the host. */
      char SetHostBytes8;
      char SkipZipTablesFlag;    /**< 207: 'Y': no ZP6, ZF2, BSC and FCC; no letter postal codes. */
      char SetHostBytes9;
      char NoBseFlag;            /**< 209: 'N': the BSE file is read. */
      char SetHostBytes10;
      char OptionFlag8;          /**< 211: for the host. */
      char SetHostBytes11;
      char OptionFlag9;          /**< 213: for the host. */
      char SetHostBytes12;
      char TariffSourceCode;     /**< 215: '2': one effective table; 'N': states from own tables. */
      char SetHostBytes13[18];
      char SurchargeOnGross;     /**< 234: 'Y': the surcharge is a share of the gross charge. */
      char SetHostBytes14[20];
      char SetByte255[4];        /**< 255-258: sent to the service guide. */
      char SetHostBytes15;
      char SetByte260;           /**< 260: '1' sends 'A' to the service guide, else 'B'. */
      char SetHostBytes16[9];
      char NoFlatDiscountFlag;   /**< 270: 'Y': flat discount percentages count as 0. */
      char SetHostBytes17[12];
    };
  };

  /** The user's DEF record: 348 bytes, copied whole and written back by WriteDefFile; the bytes
   *  not named here are the host's. */
  union {
    char DefRecord[348];
    HWT_OVERLAY struct {
      char DefHostBytes1[6];
      int16_t DefModeP1;         /**< 6-7: the profile's DiscModeP. */
      int16_t DefModeP2;         /**< 8-9: the profile's DiscModeP. */
      int16_t ConversionOn;      /**< 10-11: non-zero: ConversionRate multiplies the rate factor. */
      int16_t SurchargeOn;       /**< 12-13: non-zero: a surcharge is computed. */
      char DefHostBytes2[2];
      int16_t DiscountOn;        /**< 16-17: non-zero: discounts apply. */
      char DefHostBytes3[13];
      char DefByte31;            /**< 31: sent to the engine with the discounts. */
      char DefHostBytes4;
      char DefModeCFlag;         /**< 33: 'M' when the discount file's groups are used, else 'N'. */
      char DefHostBytes5;
      float ConversionRate;      /**< 35-38: currency conversion rate. */
      char DefHostBytes6[2];
      float DefFactorLow;        /**< 41-44: surcharge percentage below the surcharge break. */
      float RateFactor;          /**< 45-48: factor on the rates; 0 and 1 mean none. */
      char DefHostBytes7[101];
      char DefSavedBytes[36];    /**< 150-185: settings that profiles save and restore. */
      char DefHostBytes8[66];
      int16_t DefModeP3;         /**< 252-253: the profile's DiscModeP. */
      int16_t DefModeZ;          /**< 254-255: the profile's DiscModeZ. */
      float DefFactorHigh;       /**< 256-259: surcharge percentage from the surcharge break on. */
      int16_t DefLayoutMark;     /**< 260-261: 0 in a record of the earlier layout. */
      char DefBreakIndex[4];     /**< 262-265: index of a weight break, ASCII digits. */
      int16_t ProfileIndex;      /**< 266-267: record number of the current profile. */
      char DefBreakCount[4];     /**< 268-271: further breaks in use; first byte 0 = no cut. */
      char ProfileFileCurrent;   /**< 272: 'Y': the profile file has the current layout. */
      char DefHostBytes9[75];
    };
  };

  /** The DIS record: 605 bytes, copied whole. All numbers are decimal text. */
  union {
    char DiscRecord[605];
    HWT_OVERLAY struct {
      int16_t DisMethod;            /**< 0-1: 2 when a profile's discount groups are used. */
      char DisHostBytes1[86];
      char DisGroupSelector;        /**< 88: '1' to '5', how a group is chosen. */
      char DisHostBytes2[23];
      char DisWeightColumns[9][25]; /**< 112-336: weight columns; a blank or 0 first ends them. */
      char DisColumns[4][67];       /**< 337-604: discount groups. */
    };
  };
  char HostArea23[16];

  /* The origin point, then the destination point: 44 bytes each, laid out alike. */
  /** Origin point block, first field: the origin postal code, terminated (five digits; five
   *  digits and 'M'; or a letter postal code). */
  char OrigZip[7];
  char OrigState[3];  /**< Origin state code, two letters; the third byte is cleared with it. */
  /** Origin city name; the first 17 characters are sent to the engine; "None of the above" means
   *  that no city was chosen. */
  char OrigCity[31];
  char OrigServiceCode;  /**< Origin point's service code from the service guide; ' ' when none. */
  char OrigIntrastate;  /**< 'N': shipments within one state are not served from this origin. */
  /** Origin territory code: F, B, X or Y accepted as origin; N, T and others refused. */
  char OrigTerritory;
  /** Destination point block, first field: the destination postal code, same forms as OrigZip. */
  char DestZip[7];
  /** Destination state code, two letters; the third byte is cleared with it. */
  char DestState[3];
  char DestCity[31];  /**< Destination city name; the first 17 characters are sent to the engine. */
  char DestServiceCode;  /**< Destination point's service code from the service guide. */
  char DestIntrastate;  /**< Destination's intrastate flag; not read by the territory check. */
  char DestTerritory;  /**< Destination territory code: T, B, X or Y accepted as destination. */

  /* Rate code, and what the service guide answered for the two points. */
  /** Rate code from engine bytes 90-100 with blanks and NULs removed ("%06d" when shorter than
   *  6); ZMC key. */
  char RateCode[8];
  char HostArea24[8];
  /** Character sent in byte 19 of the engine rate record when EngineOptionOn is non-zero. */
  char EngineOptionCode;
  char OrigTerminal[5];  /**< Terminal code of the origin from the service guide. */
  char DestTerminal[5];  /**< Terminal code of the destination from the service guide. */
  char SgValueA[4];  /**< Two characters from service-guide answer offset 647, then zeros. */
  char SgValueB[4];  /**< Two characters from answer offset 649. */
  char SgValueC[4];  /**< Two characters from answer offset 645; "00" when empty. */

  /* The shipment's eight lines. */
  /** Class text of each line, as accepted by VerClass; terminated when shorter than 5. */
  char LineClass[8][5];
  /** Per line: index into ClassTable of the accepted (or mapped) class. */
  int32_t LineClassIndex[8];
  /** Per line: first byte '*' when the class was replaced through the profile class map, else 0. */
  char LineClassMark[8][2];
  char LineWeight[8][7];  /**< Per line: the weight text (7 bytes) accepted by VerWeight. */
  int32_t LineWeightIndex[8];  /**< Per line: index of the weight break that holds the weight. */

  /* Printable results. */
  char LineRateText[8][10];  /**< "%9.2f" rate of each of the 8 shipment lines. */
  char LineChargeText[8][15];  /**< "%11.2f" charge of each of the 8 shipment lines. */
  char HostArea25[5];
  char ExtraWeightText[7];  /**< "%6.0d" extra-line weight (engine bytes 127-132). */
  char ExtraRateText[8];  /**< "%7.2f" extra-line rate (engine bytes 120-126). */
  /** "%9.2f" extra-line charge (engine bytes 133-141), added to the gross. */
  char ExtraChargeText[10];
  char TotalWeightText[7];  /**< "%6.0d" total weight (engine bytes 101-106). */
  char BilledWeightText[7];  /**< "%6.0d" billed weight (engine bytes 107-112). */
  /** "%11.2f" gross charge = sum of line charges + extra-line charge. */
  char GrossChargeText[15];
  char DiscountPctText[6];  /**< 5 characters from engine bytes 241-245. */
  char DiscountAmountText[9];  /**< 9 characters from engine bytes 220-228. */
  char HostArea26[16];
  char SurchargeText[10];  /**< "%9.2f" surcharge amount. */
  char DiscountFlatText[6];  /**< Printable flat discount percentage. */
  char HostArea27[10];
  char NetChargeText[9];  /**< 9 characters from engine bytes 142-150. */
  char HostArea28[21];
  char MinChargeText[10];  /**< "%07.2f" minimum charge. */
  char DiscountFloorText[7];  /**< Printable discount minimum charge. */
  char HostArea29[10];
  int32_t SurchargeBreakSide;  /**< DefBreakIndex - 1 (low percentage used) or + 1 (high). */
  char HostArea30[30];
  /** Source of the chosen discount: C (DIS group), P (entered values), Z (ZIP-range record). */
  char DiscountSource;
  char HostArea31[1];

  /* Classes and weight breaks of the tariff. */
  char ClassTable[20][6];  /**< Class texts of the tariff (CLS file), 6 bytes each, terminated. */
  int32_t ClassCount;  /**< Number of entries in ClassTable. */
  /** Printable weight-break names, terminated; "XXX" in the slot after the last break in use when
   *  cut by the DEF override. */
  char WeightBreakName[20][11];
  /** Upper bound of each weight break in pounds (WGT bytes 5-12); 9999999 in the last break in
   *  use when the DEF override cuts the list. */
  int32_t WeightBreakMax[20];
  int32_t WeightBreakMin[20];  /**< Lower bound of each weight break in pounds (WGT bytes 13-20). */
  int32_t WeightBreakCount;  /**< Number of weight breaks in use. */

  /* Weight-break results. */
  /** Five lists; the first is the "MC" list, the second the "SS" list; the library sets only the
   *  counts of the third and fifth. */
  BreakList BreakLists[5];
  char HostArea32[379];

  /* Version texts of the engine. */
  /** First version text of the engine (from Tolvex_disp_verEx block offset 0). */
  char EngineVersionA[20];
  /** Version texts from block offsets 20 (3 characters) and 23 (5 characters), back to back. */
  char EngineVersionB[8];
  /** Version texts from block offsets 76 (3 characters) and 79 (5 characters), back to back. */
  char EngineVersionC[8];
  char EngineVersionD[24];  /**< Version text from block offset 84. */
  char HostArea33[9];

  /* Records and buffers of the tariff files. */
  /** The SCC file image: SccCount entries of 8 bytes: state/province code char[2], range start
   *  char[3], range end char[3], sorted. */
  unsigned char* SccTable;
  char HostArea34[24];
  char McConvertIn[10];  /**< Scratch: one 10-byte MC record before widening. */
  char McaConvertIn[10];  /**< Scratch: one 10-byte MCA record before widening. */
  char McConvertOut[12];  /**< Scratch: one widened 12-byte MC record. */
  char McaConvertOut[12];  /**< Scratch: one widened 12-byte MCA record. */
  char FacRecord[802];  /**< The FAC record. */
  char FccRecord[1352];  /**< The FCC record. */
  char BseHeader[1144];  /**< BSE header when SetVersion is 22 or more. */
  char BseHeaderOld[1044];  /**< BSE header when SetVersion is below 22. */
  char BscBlock1[16];  /**< First BSC block. */
  char BscBlock2[30];  /**< Second BSC block. */
  char BscBlock3[50];  /**< Third BSC block. */
  char BseBody[336];  /**< BSE body (length from the header). */
  char LabLine[72];  /**< Line buffer of the LAB reader. */
  char LabIndex[525][9];  /**< LAB block index: 525 entries of 5-byte key + int32 file position. */
  char LamLine[11];  /**< Line buffer of the LAM reader. */
  char LamTable[220][9];  /**< LAM entries: 6-byte key + 3-byte value, 220 slots. */
  char AdjRecord[347];  /**< Buffer of one ADJ record. */
  char AdjKeys[400][3];  /**< First 3 bytes of each ADJ record, 400 slots. */
  /** 628-byte block holding the ZPS record (zeroed when no ZPS was read). */
  unsigned char* ZpsRecord;
  char BsvRecord[75];  /**< The BSV record. */
  char HostArea35[18];
  char ZmcRecord[41];  /**< Buffer of the ZMC record being compared. */

  /* The current profile and the terminal records. */
  ProfileRecord Profile;  /**< The current profile, laid out exactly as a PROFILE.FIL record. */
  TerminalRecord OrigTerminalRecord;  /**< Terminal that serves the origin. */
  TerminalRecord DestTerminalRecord;  /**< Terminal that serves the destination. */

  /* Records of the Mexican part of the tariff set. */
  char MefRecord[350];  /**< The MEF record. */
  char MetRecord[283];  /**< The MET record. */

  /* Alternatives that the engine offers for a point, and two host switches. */
  /** Six characters copied from bytes 10-15 of the engine list block after the second engine
   *  call. */
  char EngineListHeader[6];
  /** Number of EngineList entries filled by the second engine call; set to 0 by RateShipment at
   *  entry. */
  int32_t EngineListCount;
  /** Alternatives of the second engine call; the first EngineListCount are valid. */
  EngineAlternative EngineList[25];
  char HostArea36[3];
  char ProfilesInDataDir;  /**< 'Y': PROFILE.FIL/.ZSA/.TMP live in DataDir instead of UserDir. */
  char HostArea37[12];
  /** 'Y': terminal codes beginning with "XXX" are cleared by GetService and GetTerminals. */
  char BlankUnknownTerminals;
} RateContext;

#pragma pack(pop)
/* clang-format on */

#endif
