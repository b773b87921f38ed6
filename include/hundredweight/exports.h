/**
 * The 49 functions of the library.
 *
 * Unless a function says otherwise its result is 1 for success and 0 for failure, and a failure
 * leaves its code in RateContext.ErrorCode; warning() shows the message of a code. A success does
 * not clear ErrorCode: the result alone tells.
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

/* Messages. An empty text stands for the message of the code; a longer one than 179 characters is
 * cut. The owner is the window that owns the box, or null. */

/** Shows an error box and posts the quit message with the code as exit code. */
HWT_API void HWT_CALL fatal(const char* text, const char* caption, int32_t code);
/** Shows a warning box. Result: what the box returned, 0 when it could not be shown. */
HWT_API int32_t HWT_CALL warning(const char* text, const char* caption, int32_t code, void* owner);
/** Asks a yes/no question. Result: 0 for No, 1 for anything else. */
HWT_API int32_t HWT_CALL question(const char* text, const char* caption, int32_t code, void* owner);

/* Utilities on terminated texts. */

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
/** Replaces everything from the first dot of a name by an extension of at most 4 characters, or
 *  appends it; the buffer must hold the result. A name of more than 259 characters is left as it
 *  is. Result: the name. */
HWT_API char* HWT_CALL ForceFileNameExtension(char* name, const char* extension);

/* Tariff set: DataDir, UserDir and FileBase name its files. */

/** Reads the level file of the given name into LevelTable and sets LevelFileDate from its first
 *  record. Codes: 300 not opened, 302 not allocated, 304 not read. */
HWT_API int32_t HWT_CALL OpenLevelFile(RateContext* context, const char* file_name);
/** Reads the COZ file into CozTable. A missing file stores no code. Codes: 150, 151. */
HWT_API int32_t HWT_CALL ReadCOZFile(RateContext* context);
/** Loads the whole tariff set. Sets *found to 1 when a state table (SC or SCC) was read. A failed
 *  load leaves what it read to CloseAllFiles. Codes: those of the files. */
HWT_API int32_t HWT_CALL OpenAllFiles(RateContext* context, int32_t* found);
/** Releases every table and handle of the record, and the process-wide name tables. Result: 1. */
HWT_API int32_t HWT_CALL CloseAllFiles(RateContext* context);
/** Reads the DEF record from UserDir, else DataDir. Codes: 240 not opened, 244 too short. */
HWT_API int32_t HWT_CALL ReadDefFile(RateContext* context);
/** Writes the DEF record to the current directory, and MEF when the Mexico files are loaded.
 *  Codes: 241 not created, 245 not written, 160 and 161 for MEF. */
HWT_API int32_t HWT_CALL WriteDefFile(RateContext* context);
/** Writes the MEF record to UserDir. Codes: 160 not created, 161 not written. */
HWT_API int32_t HWT_CALL WriteMexicoDefFile(RateContext* context);
/** Reads the weight breaks, cut as the DEF record says. Codes: 380, 384, 385. */
HWT_API int32_t HWT_CALL ReadWgtFile(RateContext* context);
/** Writes AccCount records to the ACC file of the current directory. Codes: 520, 246. */
HWT_API int32_t HWT_CALL WriteAccFile(RateContext* context);

/* Base-rate engine. One engine serves all records of a process. */

/** Binds the ten entry points of EngineModule. Codes: 400 to 409, the first one missing. */
HWT_API int32_t HWT_CALL GetTolvexAddresses(RateContext* context, int32_t reserved);
/** Starts the engine on DataDir, builds EfcTable and copies the version texts. Result 1 also when
 *  UseEngine is 0 or an engine runs already. Codes: 113, 114; 140 and 141 do not fail it. */
HWT_API int32_t HWT_CALL InitializeTolvexdll(RateContext* context);
/** Ends the engine. Result: 0 when the engine complained; no code. */
HWT_API int32_t HWT_CALL EndTolvexdll(RateContext* context);
/** The first effective table that matches a key of at least 19 bytes: tariff name in bytes 0-7 and
 *  the date parts in bytes 9-12, 14-15 and 17-18. Result: an entry of EfcTable, or null. */
HWT_API EfcRecord* HWT_CALL GetCurrentEfcRec(RateContext* context, const char* key);
/** Finds the base-rate point codes of OrigZip and DestZip. Result 0 stores no code. */
HWT_API int32_t HWT_CALL GetTolvexBse(RateContext* context);
/** Finds the TariffName of the point codes found last. Result 0 stores no code. */
HWT_API int32_t HWT_CALL GetTolvexTariffName(RateContext* context);
/** Asks the running engine for the two letters of a postal code's state. Result 0: none. */
HWT_API int32_t HWT_CALL TolvexGetStateCode(const char* postal_code, char* state);

/* Rating. */

/** Rates the shipment in the record. The request code, 0 to 99, is passed to the engine. Result: 0
 *  rated, 1 when UseEngine is 0, 9999 failed. Codes: 501 no point code, 103 no tariff, 118 discount
 *  out of range, 133 and 134 engine failed, -1 engine refused with a message of its own. */
HWT_API int32_t HWT_CALL RateShipment(RateContext* context, int32_t request_code, int32_t reserved);
/** Lays out classes and weight breaks. Mode 1 asks the engine, 2 takes the last answer's tables,
 *  anything else the standard ones. */
HWT_API void HWT_CALL SetClassesAndWeights(RateContext* context, int32_t mode, int32_t reserved);

/* Discounts. */

/** Reads the DIS record, from the current directory first. Codes: 250, 254. */
HWT_API int32_t HWT_CALL ReadDiscFile(RateContext* context);
/** Clears the discount list over DiscBreakCount weight breaks, and its texts. */
HWT_API void HWT_CALL ClearDiscList(RateContext* context);
/** Mode 0 settles the shipment's discount list; any other mode copies the discount file's groups
 *  into the host's table. */
HWT_API void HWT_CALL LoadDiscounts(RateContext* context, HostDiscountTable* table, int32_t mode);

/* Validation. */

/** Checks the form of OrigZip. Code: 101. */
HWT_API int32_t HWT_CALL VerOrigZip(RateContext* context);
/** Checks the form of DestZip. Code: 102. */
HWT_API int32_t HWT_CALL VerDestZip(RateContext* context);
/** Checks whether the two points may be rated together. Codes: 103, 266. */
HWT_API int32_t HWT_CALL VerTerritory(RateContext* context);
/** Finds the state (2 characters) and attribute bytes of a postal code. Codes: 103, 265, or 0. */
HWT_API int32_t HWT_CALL GetStateCode(RateContext* context, const char* postal_code, char* state,
                                      char* attribute_a, char* attribute_b);
/** Result: index of the SccTable entry that holds the key's first 3 characters, or -1. */
HWT_API int32_t HWT_CALL GetZipcIndex(RateContext* context, const char* key);
/** Checks a class and records it for a line, 0 to 7. Code: 105. */
HWT_API int32_t HWT_CALL VerClass(RateContext* context, const char* class_text, int32_t line,
                                  int32_t fak_allowed);
/** Checks a weight text of at least 7 readable bytes and records it for a line. Code: 106. */
HWT_API int32_t HWT_CALL VerWeight(RateContext* context, const char* weight_text, int32_t line);
/** Result: 1 when the weight break of an index is in use. */
HWT_API int32_t HWT_CALL ValidWeight(RateContext* context, int32_t index);

/* Profiles and option records. */

/** Makes PROFILE.FIL ready: creates, copies or converts it. Result: true when ready. Code: 121. */
HWT_API bool HWT_CALL ReadProfileFile(RateContext* context);
/** Loads the profile named Profile.ProfileName. Codes: 125, 126, 127. */
HWT_API int32_t HWT_CALL GetProfileRecord(RateContext* context);
/** Copies the 31-byte name of a record, counted from 0. Codes: 125, 126. */
HWT_API int32_t HWT_CALL GetProfileKey(RateContext* context, int32_t record_number, char* name);
/** Result: number of profiles; 0 with code 125 when the file cannot be opened. */
HWT_API int32_t HWT_CALL GetProfileSize(RateContext* context);
/** Copies the current profile's settings into the DEF and DIS records. */
HWT_API void HWT_CALL LoadProfileSettings(RateContext* context);
/** Loads the profile's own ZIP table, or the tariff's. Codes: 436, 168, 438. */
HWT_API int32_t HWT_CALL LoadProfileZP6(RateContext* context);
/** Converts an option file of the older layout in place and finds a record by name. The record is
 *  an OptionRecord. Result 0: not found or not opened; no code. */
HWT_API int32_t HWT_CALL ReadFendroOpt(const char* path, void* record, const char* name);

/* Service guide. */

/** Binds the five entry points of ServiceGuideModule. Codes: 525, 527, 528, 529. */
HWT_API int32_t HWT_CALL GetSGAddresses(RateContext* context, int32_t reserved);
/** Starts the service guide on DataDir. No code. */
HWT_API int32_t HWT_CALL InitializeSGdll(RateContext* context);
/** Fetches terminals, service codes and values of the two points. Code: 533. */
HWT_API int32_t HWT_CALL GetService(RateContext* context);
/** Fetches the two terminal records, after GetService. Code: 533; -1 on success. */
HWT_API int32_t HWT_CALL GetTerminals(RateContext* context);
/** Ends the service guide. Result: 0 when it complained; no code. */
HWT_API int32_t HWT_CALL EndSGdll(RateContext* context);

#ifdef __cplusplus
}
#endif

#endif
