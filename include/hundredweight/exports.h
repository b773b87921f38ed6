/**
 * The 49 functions of the library, by subject.
 *
 * The order of a run: the tariff set, the engine and the service guide, a profile; then for each
 * shipment its validation, services, discounts and rating; at last the ends of the two partners and
 * CloseAllFiles. The sections say more where the order matters.
 *
 * Unless a function says otherwise its result is 1 for success and 0 for failure, and a failure
 * leaves its code, one of those listed, in RateContext.ErrorCode; warning() shows the message of a
 * code. A success does not clear ErrorCode, and a failure that is tolerated leaves its code behind:
 * the result alone tells.
 *
 * Pointers are never null unless a comment says so; texts are terminated 8-bit characters. What the
 * host passes stays the host's. Blocks and open files hang on the record until CloseAllFiles; no
 * result is to be freed by the host. Arguments named reserved are not read: pass 0.
 *
 * Calls come from one thread, on one record at a time: the engine, the service guide, the name
 * tables (CBS and CMT files) and the copies of files exist once in a process. Copies there are on
 * Linux: RateShipment keeps one of the ZMC file, GetProfileRecord one of the profiles' names, as
 * long as device, inode, size and times prove the file unchanged. Replace such a file by a rename;
 * a write through a shared mapping may leave its times, and go unnoticed.
 */
#ifndef HUNDREDWEIGHT_EXPORTS_H
#define HUNDREDWEIGHT_EXPORTS_H

#include <hundredweight/abi.h>
#include <hundredweight/host_records.h>
#include <hundredweight/rate_context.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Messages. The box shows the text or, when that is empty or null, the message of the code ("Error
 * occurred." for a code without one); a text longer than 179 characters is cut. The caption is the
 * box's title, the owner the window that owns the box, or null. On systems without message boxes of
 * their own they go to the handlers of platform.h. */

/** Shows an error box and posts the quit message with the code as exit code, also when the text is
 *  the host's own. */
HWT_API void HWT_CALL fatal(const char* text, const char* caption, int32_t code);
/** Shows a warning box. Result: what the box returned, 1 for OK, 0 when it could not be shown. */
HWT_API int32_t HWT_CALL warning(const char* text, const char* caption, int32_t code, void* owner);
/** Asks a yes/no question. Result: 0 for No, 1 for anything else, also for a box not shown. */
HWT_API int32_t HWT_CALL question(const char* text, const char* caption, int32_t code, void* owner);

/* Utilities. They take no record and report no failure. White space is a blank, tab, line feed,
 * vertical tab, form feed or carriage return. */

/** Removes trailing white space in place. Result: the text. */
HWT_API char* HWT_CALL strtrim(char* text);
/** Removes leading white space in place. Result: the text. */
HWT_API char* HWT_CALL strltrim(char* text);
/** Rounds to a number of decimal places, negative ones to tens, hundreds, ...; a fraction of 0.49
 *  or more rounds up, toward positive infinity. */
HWT_API float HWT_CALL rndoff(float value, int32_t places);
/** The file name of a path when it has both a base name and an extension, else the whole path; an
 *  empty text for a path of more than 259 characters. Result: a static buffer that the next call
 *  overwrites. */
HWT_API char* HWT_CALL SplitPath(const char* path);
/** Replaces everything from the first dot of a name, directories included, by an extension such as
 *  ".FIL", cut to 4 characters; appends it when there is no dot, or the name begins with one. The
 *  buffer must hold the result. A name of more than 259 characters is left as it is. Result: the
 *  name. */
HWT_API char* HWT_CALL ForceFileNameExtension(char* name, const char* extension);

/* Tariff set. DataDir, UserDir and FileBase name its files; UseEngine decides which are needed.
 * Order: ReadDefFile, OpenAllFiles, then the other readers; CloseAllFiles at the end. A reader that
 * is called again releases what it replaces. */

/** Reads the level file of the given name, with its extension, from DataDir into LevelTable, and
 *  sets LevelFileDate, the tariff date of ratings, from its first record unless the file is shorter
 *  than 16 bytes.
 *  Codes: 300 not opened, 302 not allocated, 304 not read whole. */
HWT_API int32_t HWT_CALL OpenLevelFile(RateContext* context, const char* file_name);
/** Reads the COZ file into CozTable. A missing file gives 0 without a code.
 *  Codes: 150 not allocated, 151 not read whole. */
HWT_API int32_t HWT_CALL ReadCOZFile(RateContext* context);
/** Loads the whole tariff set: first the settings (SET), whose flags and UseEngine decide what else
 *  is read. Sets *found to 1 when a state table (SC or SCC) was read and leaves it alone otherwise.
 *  A failed load keeps what it read for CloseAllFiles.
 *  Codes by file, where a flag is meant to be 'Y' or a switch not 0:
 *            not opened  no memory  not read whole
 *    SET     370                    374
 *    ACC     490                    494 (no record)    with AccFileFlag
 *    SCC     460         460        460                unless SkipZipTablesFlag
 *    ZP6     436         168        438                unless SkipZipTablesFlag
 *    WGT     380                    385 (no record)    unless UseEngine
 *    BSV                            225                if there is one
 *    ZPS                 444        444                if there is one
 *    DCH     269         269        269
 *  and, unless UseEngine:
 *    MCH     182         193        324
 *    CLS     230                    235 (no class)
 *    ZFM     456                    457                with MexicoFilesLoaded
 *    ZP7     582         583        584                the same, unless Zp7FileFlag is 'N'
 *    ZF2     410         414        414                unless SkipZipTablesFlag
 *    RTC     350 (nor RCL)                             unless SkipZipTablesFlag
 *    BSC     480                    484                unless SkipZipTablesFlag
 *    FAC     260                    264                unless NoBaseTablesFlag
 *    FCC     260                    264                unless SkipZipTablesFlag
 *    BSE     220                    224                unless NoBaseTablesFlag or NoBseFlag
 *    ZF1     390                    394                unless NoBaseTablesFlag
 *    LA      270         272        274                unless NoBaseTablesFlag
 *    RBA     340         342        344                unless NoBaseTablesFlag
 *    MC      181         312        314                unless NoBaseTablesFlag
 *    MCA     183         362        534                the same, with McaFileFlag
 *    LAB     280                    284                with LabFilesFlag
 *    LAM     290                                       with LabFilesFlag
 *    ADJ     210         214        214                with LabFilesFlag
 *    TBL     450
 *    RTE     350 (nor RTL)
 *  A load that succeeds may leave behind 360 or 364 (SC not opened, too short), 460 or 464 (SCC),
 *  384 (fewer than 9 WGT records) and, with UseEngine, 380 or 385. */
HWT_API int32_t HWT_CALL OpenAllFiles(RateContext* context, int32_t* found);
/** Frees every table of the record, effective and name tables included, and closes every handle and
 *  stream. Records and counts stay as they are. May be called at any time. Result: 1. */
HWT_API int32_t HWT_CALL CloseAllFiles(RateContext* context);
/** Reads the user's defaults, the DEF record, from UserDir, else DataDir; one of the earlier layout
 *  is brought up to date in the record, not in its file. Comes before OpenAllFiles, whose weight
 *  breaks it may cut.
 *  Codes: 240 not opened, 244 shorter than 348 bytes. */
HWT_API int32_t HWT_CALL ReadDefFile(RateContext* context);
/** Writes the DEF record to the current directory and, when MexicoFilesLoaded, the MEF record. As
 *  with every file that the library replaces: the old content or the new stands there at any
 *  moment, with its owner and rights; one that may not be written is not replaced; and when another
 *  process changes files of the directory, the call waits for it, up to ten seconds.
 *  Codes: 241 not created, 245 not written; 160 and 161 the same for MEF. */
HWT_API int32_t HWT_CALL WriteDefFile(RateContext* context);
/** Writes the MEF record, the defaults of the Mexican part, to UserDir.
 *  Codes: 160 not created, 161 not written. */
HWT_API int32_t HWT_CALL WriteMexicoDefFile(RateContext* context);
/** Reads the weight breaks, cut as the DEF record says; a step of OpenAllFiles.
 *  Codes: 380 not opened, 385 no record; 384, with result 1, fewer than 9 records. */
HWT_API int32_t HWT_CALL ReadWgtFile(RateContext* context);
/** Writes the first AccCount of AccRecords to the ACC file of the current directory.
 *  Codes: 520 not created, 246 not written. */
HWT_API int32_t HWT_CALL WriteAccFile(RateContext* context);

/* Base-rate engine, which the host has loaded into EngineModule. Order: GetTolvexAddresses,
 * InitializeTolvexdll after OpenAllFiles, ratings and look-ups, EndTolvexdll. */

/** Binds the ten entry points of EngineModule, up to the first that is missing. An engine that runs
 *  is forgotten, not ended. After a failure the engine must not be started.
 *  Codes: the entry point that is missing:
 *    400 Tolvex_GetStateEx            405 Tolvex_GetEffectiveTableSizeEx
 *    401 Tolvex_GetErrorStringEx      406 Tolvex_GetTablesEx
 *    402 Tolvex_InitializeTolvexEx    407 Tolvex_RateShipment2Ex
 *    403 Tolvex_Set_TolvexdataEx      408 Tolvex_disp_verEx
 *    404 Tolvex_GetEffectiveTableEx   409 Tolvex_EndTolvexEx */
HWT_API int32_t HWT_CALL GetTolvexAddresses(RateContext* context, int32_t reserved);
/** Starts the engine on DataDir, builds EfcTable and copies the version texts. Result: 1 also when
 *  UseEngine is 0 or an engine runs already, and nothing is done; 0 without a code when an entry
 *  point is not bound. After a failure with a code nothing can be rated, but EndTolvexdll is due.
 *  Codes: 113 no memory for the list block, 114 for the result block; with result 1, EfcTable being
 *  incomplete, 140 the engine did not give an effective table, 141 no memory for EfcTable. */
HWT_API int32_t HWT_CALL InitializeTolvexdll(RateContext* context);
/** Ends the engine and frees the blocks exchanged with it; EfcTable stays until CloseAllFiles.
 *  Result: 0 when the engine complained, without a code; 1 also when none runs. */
HWT_API int32_t HWT_CALL EndTolvexdll(RateContext* context);
/** The first effective table that matches a key of at least 19 bytes: tariff name in bytes 0-7 and
 *  the date parts in bytes 9-12, 14-15 and 17-18; any characters separate them. Result: an entry of
 *  EfcTable, valid as long as that is; null when none matches. Stores no code. */
HWT_API EfcRecord* HWT_CALL GetCurrentEfcRec(RateContext* context, const char* key);
/** Finds the base-rate point codes of OrigZip and DestZip in the name tables and keeps them for
 *  GetTolvexTariffName. Result: 0 when a postal code has none; stores no code. */
HWT_API int32_t HWT_CALL GetTolvexBse(RateContext* context);
/** Finds the tariff of the point codes that GetTolvexBse found last and writes its 8 characters to
 *  TariffName. Result: 0, and TariffName as it was, when there is none; stores no code. */
HWT_API int32_t HWT_CALL GetTolvexTariffName(RateContext* context);
/** Asks the running engine for the state of a postal code and writes its two letters, without
 *  terminator, to state. Result: 0 when it has none, or no engine is bound; stores no code. */
HWT_API int32_t HWT_CALL TolvexGetStateCode(const char* postal_code, char* state);

/* Rating, with a running engine and the shipment's points, lines and discounts in the record. */

/** Rates the shipment in the record. The request code, 0 to 99, is passed to the engine as two
 *  digits. Writes the printable results, BreakLists, the Zmc fields and the tables that
 *  SetClassesAndWeights lays out; with EngineListCount above 0 the engine offers other points in
 *  EngineList. ErrorCode is not cleared, and an old -1, 133 or 134 fails a rating that offers other
 *  points: set it to 0 first, and ZmcMinimum for a shipment that is independent of the last.
 *  Result: 0 rated; 1 UseEngine is 0, nothing was done; 9999 failed. After -1 and 134 the results
 *  are what the engine answered all the same, after the others those of an earlier rating.
 *  Codes:
 *    501  a postal code has no point code (only when NameTablesLoaded is 'Y')
 *    103  no tariff between the two points (only when NameTablesLoaded is 'Y')
 *    118  a discount percentage outside 0 to 99.99
 *    133  the engine could not rate, or does not run; not stored with QuietEngineErrors
 *    134  the engine could not list alternatives
 *    -1   the engine refused; its message has been shown unless QuietEngineErrors is set */
HWT_API int32_t HWT_CALL RateShipment(RateContext* context, int32_t request_code, int32_t reserved);
/** Lays out ClassTable and, unless WgtLoaded, the weight breaks, and cuts these as the DEF record
 *  says; nothing when UseEngine is 0. Mode 1 asks the engine for the tables of TariffName and
 *  LevelFileDate, 2 takes those of its last answer, anything else, or a TariffName that names no
 *  tariff, the standard ones. Stores no code; a failed request shows a box and leaves no class. */
HWT_API void HWT_CALL SetClassesAndWeights(RateContext* context, int32_t mode, int32_t reserved);

/* Discounts. ReadDiscFile once for a tariff set, before profile settings, which change DiscRecord;
 * LoadDiscounts with mode 0 before each rating, after GetService. */

/** Reads the DIS record, from the current directory, else DataDir, and sets DiscBreakCount.
 *  Codes: 250 not opened, 254 shorter than 605 bytes. */
HWT_API int32_t HWT_CALL ReadDiscFile(RateContext* context);
/** Clears the discount list over DiscBreakCount weight breaks, and its two texts; DiscountSource
 *  stays. */
HWT_API void HWT_CALL ClearDiscList(RateContext* context);
/** Mode 0 settles the shipment's discount list and does not read the table, which may be null: it
 *  clears the list and, when DiscountOn, takes the discount file's group (Profile.DiscModeC), then
 *  over it the entered values (Profile.DiscModeP), then over both the first of the profile's
 *  ZipDiscounts that matches (DefModeZ). Any other mode copies the discount file's groups into the
 *  host's table, whose TableType is set, and looks for such a record too. Stores no code. */
HWT_API void HWT_CALL LoadDiscounts(RateContext* context, HostDiscountTable* table, int32_t mode);

/* Validation of a shipment: its postal codes, states and territory, then class and weight of each
 * line. Postal codes begin with a digit (ZIP, USPS) or a letter (Canada Post). */

/** Checks the form of OrigZip: as many digits as ZipLength says, or three letter-code characters
 *  when SkipZipTablesFlag is not 'Y'. Code: 101 not acceptable. */
HWT_API int32_t HWT_CALL VerOrigZip(RateContext* context);
/** Checks the form of DestZip in the same way. Code: 102 not acceptable. */
HWT_API int32_t HWT_CALL VerDestZip(RateContext* context);
/** Checks by states and territory codes whether the two points may be rated together; a pair of
 *  which one is a letter code or Mexican passes. Sets CrossBorder and MexicoShipment, also when it
 *  fails with 103.
 *  Codes: 103 out of scope, 266 two letter postal codes. */
HWT_API int32_t HWT_CALL VerTerritory(RateContext* context);
/** Finds the state of a postal code: by ScTable or SccTable, or by the engine when ScTable is not
 *  loaded and TariffSourceCode is not 'N'. Writes two letters without terminator to state, "MX" for
 *  a Mexican code, and for a ZIP of ScTable a byte each to attribute_a and attribute_b.
 *  Codes: 103 out of scope, 265 Alaska, Hawaii or Puerto Rico, 0 no state; the engine's answer
 *  stores none. */
HWT_API int32_t HWT_CALL GetStateCode(RateContext* context, const char* postal_code, char* state,
                                      char* attribute_a, char* attribute_b);
/** Finds the range of letter postal codes that holds a key's first 3 characters, which need no
 *  terminator. Result: index of
 *  its entry in SccTable, or -1; stores no code. */
HWT_API int32_t HWT_CALL GetZipcIndex(RateContext* context, const char* key);
/** Checks a class against ClassTable and records it for a line, 0 to 7, in LineClass and
 *  LineClassIndex; when the profile's class map is on, in LineClassIndex and LineClassMark alone,
 *  with the class that it is mapped to. With fak_allowed non-zero "FAK", freight of all kinds,
 *  passes unrecorded unless it is the table's first class.
 *  Code: 105 unknown class, or no such line. */
HWT_API int32_t HWT_CALL VerClass(RateContext* context, const char* class_text, int32_t line,
                                  int32_t fak_allowed);
/** Checks a weight in pounds, a text of at least 7 readable bytes, against the weight breaks and
 *  records it for a line, 0 to 7, in LineWeight and LineWeightIndex.
 *  Code: 106 no break in use holds it, or no such line. */
HWT_API int32_t HWT_CALL VerWeight(RateContext* context, const char* weight_text, int32_t line);
/** Result: 1 when the weight break of an index, from 0, is in use, else 0; stores no code. */
HWT_API int32_t HWT_CALL ValidWeight(RateContext* context, int32_t index);

/* Profiles, in PROFILE.FIL of UserDir (DataDir when ProfilesInDataDir is 'Y'), and option records.
 * Order: ReadProfileFile after ReadDefFile and OpenAllFiles, GetProfileRecord, LoadProfileSettings,
 * LoadProfileZP6. */

/** Makes PROFILE.FIL ready: copies the one of DataDir or, without one, creates it with a profile
 *  "Default" of the current settings, which it also leaves in Profile; converts one of the earlier
 *  layout. Result: true when ready.
 *  Code: 121 not created, copied or converted. */
HWT_API bool HWT_CALL ReadProfileFile(RateContext* context);
/** Loads the first profile whose name is Profile.ProfileName, all 31 bytes compared, into Profile
 *  and sets ProfileIndex.
 *  Codes: 125 not opened, 126 not read, 127 no such profile. */
HWT_API int32_t HWT_CALL GetProfileRecord(RateContext* context);
/** Copies the name of a profile, counted from 0, to name, which holds 31 bytes.
 *  Codes: 125 not opened, 126 no such record. */
HWT_API int32_t HWT_CALL GetProfileKey(RateContext* context, int32_t record_number, char* name);
/** Result: number of profiles; 0 with code 125 when the file cannot be opened. */
HWT_API int32_t HWT_CALL GetProfileSize(RateContext* context);
/** Makes Profile take effect: copies its settings into the DEF record, its discount values into
 *  groups 0 and 1 of the DIS record, of which it clears 2 and 3, and switches DiscountOn on or off
 *  with its discount modes. Cannot fail. */
HWT_API void HWT_CALL LoadProfileSettings(RateContext* context);
/** Replaces Zp6Table by the profile's own table, ProfileName and ".ZP6" in DataDir, when DiscModeZ
 *  and DiscountOn are on, else or when that fails by the tariff's. Result: 1 also when
 *  SkipZipTablesFlag is 'Y', and nothing is loaded.
 *  Codes: 436 not opened, 168 not allocated, 438 not read whole; with result 1 the own table's. */
HWT_API int32_t HWT_CALL LoadProfileZP6(RateContext* context);
/** Finds the record of a name in an option file, whose path has at most 259 characters, and copies
 *  it to record, an OptionRecord of the host's whose content means nothing after a failure. A file
 *  of the older layout is converted first, its old content kept beside it in SAVEPRS.FIL. Result: 1
 *  found; 0 not found, not opened, or not converted, the file being as it was. Stores no code. */
HWT_API int32_t HWT_CALL ReadFendroOpt(const char* path, void* record, const char* name);

/* Service guide, which the host has loaded into ServiceGuideModule. Order: GetSGAddresses,
 * InitializeSGdll, GetService and then GetTerminals for each shipment, EndSGdll. When
 * UseServiceGuide is 0 all but the first return 1 and do nothing, save that GetService clears the
 * three SgValue fields. */

/** Binds the five entry points of ServiceGuideModule, up to the first that is missing.
 *  Codes, each a missing entry point: 525 ServGd_Initialize, 527 ServGd_GetServGuideData,
 *  528 ServGd_GetTerminals or ServGd_GetTermToTermDays, 529 ServGd_Terminate. */
HWT_API int32_t HWT_CALL GetSGAddresses(RateContext* context, int32_t reserved);
/** Starts the service guide on DataDir. Result: 0 when it did not start; stores no code. */
HWT_API int32_t HWT_CALL InitializeSGdll(RateContext* context);
/** Fetches terminals, service codes and the three values of OrigZip and DestZip.
 *  Code: 533 the service guide failed or is not bound. */
HWT_API int32_t HWT_CALL GetService(RateContext* context);
/** Fetches the terminal records of the two points that GetService asked for last. ErrorCode is -1
 *  on success. Code: 533 the service guide failed or is not bound. */
HWT_API int32_t HWT_CALL GetTerminals(RateContext* context);
/** Ends the service guide. Result: 0 when it complained or is not bound; stores no code. */
HWT_API int32_t HWT_CALL EndSGdll(RateContext* context);

#ifdef __cplusplus
}
#endif

#endif
