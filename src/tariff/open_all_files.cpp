// The load of a whole tariff set.
#include <hundredweight/exports.h>

#include <utility>

#include "platform/directory_listing.h"
#include "tariff/base_rates.h"
#include "tariff/classes_and_weights_files.h"
#include "tariff/data_file.h"
#include "tariff/indexed_file.h"
#include "tariff/item_files.h"
#include "tariff/labels.h"
#include "tariff/minimum_charges.h"
#include "tariff/name_tables.h"
#include "tariff/record_fields.h"
#include "tariff/single_record.h"
#include "tariff/text_files.h"
#include "tariff/whole_file.h"
#include "tariff/zmc_file.h"

using namespace hundredweight;

namespace {

constexpr int32_t kNoSccFile = 460;
constexpr int32_t kNoLamFile = 290;
constexpr int32_t kNoTblFile = 450;
constexpr int32_t kNoRteFile = 350;
constexpr int32_t kCannotReadBsv = 225;
constexpr int32_t kCannotReadZps = 444;
constexpr int32_t kCannotReadDch = 269;

void NormaliseFlags(RateContext& context) {
    for (char* flag : {&context.AccFileFlag, &context.NoBaseTablesFlag, &context.OptionFlag3,
                       &context.McaFileFlag, &context.OptionFlag5, &context.SkipZipTablesFlag,
                       &context.NoBseFlag, &context.OptionFlag8, &context.OptionFlag9}) {
        if (*flag != 'Y') *flag = 'N';
    }
}

/// The table of letter postal codes; a set that has it has ZIP tables.
bool ReadLetterStates(RateContext& context, int32_t* found) {
    if (ReadTable(context, kSccTable) == 1) {
        *found = 1;
        context.SkipZipTablesFlag = 'N';
        return true;
    }
    if (context.SkipZipTablesFlag == 'Y') return true;
    return Fail(context, kNoSccFile) != 0;
}

void ClearZp7Table(RateContext& context) {
    StoreBlock(context, HWT_FIELD(Zp7Table),
               AllocateBlock(static_cast<std::size_t>(kZp7Table.record_size)));
}

bool ReadWeightBreaks(RateContext& context) {
    context.WgtLoaded = ReadWgtFile(&context);
    return context.WgtLoaded != 0 || context.UseEngine != 0;
}

bool ReadMexicoTables(RateContext& context) {
    if (context.MexicoFilesLoaded == 0) return true;
    return ReadZfmFile(context) && (context.Zp7FileFlag == 'N' || ReadTable(context, kZp7Table));
}

bool ReadZipTables(RateContext& context) {
    return context.SkipZipTablesFlag == 'Y' || (ReadZf2File(context) && ReadBscFile(context));
}

bool ReadBaseTables(RateContext& context) {
    if (context.NoBaseTablesFlag == 'Y') return true;
    return (context.NoBseFlag != 'N' || ReadBseFile(context)) && ReadZf1File(context) &&
           ReadTable(context, kLaTable) && ReadTable(context, kRbaTable) && ReadMcFile(context) &&
           (context.McaFileFlag != 'Y' || ReadMcaFile(context));
}

bool ReadTexts(RateContext& context) {
    if (context.LabFilesFlag != 'Y') return true;
    if (!ReadLabFile(context)) return false;
    if (!ReadLamFile(context)) return Fail(context, kNoLamFile) != 0;
    return ReadAdjFile(context) != 0;
}

bool ReadTableNames(RateContext& context) {
    return ReadTblFile(context) != 0 || Fail(context, kNoTblFile) != 0;
}

bool ProbeRateFile(RateContext& context) {
    context.RteFallback = 0;
    context.RtlInUse = 0;
    context.RteHandle = -1;
    if (HasDataFile(context, ".RTE")) return true;
    if (!HasDataFile(context, ".RTL")) return Fail(context, kNoRteFile) != 0;
    context.RteFallback = 1;
    context.RtlInUse = 1;
    return true;
}

/// What the library itself rates with when there is no engine.
bool ReadOwnRateTables(RateContext& context) {
    return ReadTable(context, kMchTable) && ReadClsFile(context) && ReadMexicoTables(context) &&
           ReadZipTables(context) && ReadFacFile(context) && ReadBaseTables(context) &&
           ReadTexts(context) && ReadTableNames(context) && ProbeRateFile(context);
}

bool ReadLabels(RateContext& context) {
    context.ZpsPresent = 0;
    context.BsvPresent = 0;
    context.ZpsSuppressed = 0;
    context.TrmPresent = 0;
    context.SrvPresent = 0;
    CloseHandleField(context, HWT_FIELD(BsvHandle));
    StoreHandle(context, HWT_FIELD(BsvHandle), OpenDataFile(context, ".BSV"));
    if (context.BsvHandle == -1) return true;
    context.BsvPresent = 1;
    if (!ReadBsvFile(context)) return Fail(context, kCannotReadBsv) != 0;
    context.TrmPresent = HasDataFile(context, ".TRM") ? 1 : 0;
    context.SrvPresent = HasDataFile(context, ".SRV") ? 1 : 0;
    return true;
}

bool ReadPartnerLabels(RateContext& context) {
    StoreBlock(context, HWT_FIELD(ZpsRecord), AllocateBlock(kZpsRecordSize));
    if (context.ZpsSuppressed != 0) return true;
    CloseHandleField(context, HWT_FIELD(ZpsHandle));
    StoreHandle(context, HWT_FIELD(ZpsHandle), OpenDataFile(context, ".ZPS"));
    if (context.ZpsHandle == -1) return true;
    context.ZpsPresent = 1;
    return ReadZpsFile(context) != 0 || Fail(context, kCannotReadZps) != 0;
}

}  // namespace

int32_t HWT_CALL OpenAllFiles(RateContext* record, int32_t* found) {
    RateContext& context = *record;
    const platform::DirectoryListing listing;
    if (!ReadSetFile(context)) return 0;
    NormaliseFlags(context);
    context.MexicoFilesLoaded = ReadMexicoFiles(context);
    if (context.AccFileFlag == 'Y' && !ReadAccFile(context)) return 0;
    if (!ReadLetterStates(context, found)) return 0;
    if (ReadScFile(context)) *found = 1;
    if (context.SkipZipTablesFlag != 'Y' && !ReadTable(context, kZp6Table)) return 0;
    ClearZp7Table(context);
    if (!ReadWeightBreaks(context)) return 0;
    if (context.UseEngine == 0 && !ReadOwnRateTables(context)) return 0;
    if (!ReadLabels(context)) return 0;
    if (!ReadPartnerLabels(context)) return 0;
    context.ZmcCount = CountZmcRecords(context);
    context.RteFallback = 0;
    context.NameTablesLoaded = ReadNameTables(context) ? 'Y' : 'N';
    ReadTable(context, kSzpTable);
    ReadWsmFile(context);
    return ReadTable(context, kDchTable) ? 1 : Fail(context, kCannotReadDch);
}
