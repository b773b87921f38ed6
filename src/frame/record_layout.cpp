// The layout of the records that cross the library's borders, checked in every build.
#include <hundredweight/engine_interface.h>
#include <hundredweight/host_records.h>
#include <hundredweight/rate_context.h>

#include <cstddef>

namespace {

// Positions are those of a machine with 32-bit pointers; a wider pointer moves what follows it.
constexpr std::size_t kWiderBy = sizeof(void*) - 4;
constexpr std::size_t kPointersInRecord = 20;

#define HWT_AT(record, field, offset, pointers_before) \
    static_assert(offsetof(record, field) == (offset) + (pointers_before)*kWiderBy)
#define HWT_WITHIN(record, field, offset) \
    static_assert(offsetof(RateContext, field) == offsetof(RateContext, record) + (offset))

// clang-format off
static_assert(sizeof(ZipDiscountRecord) == 117);
static_assert(sizeof(ProfileRecord) == 17897);
static_assert(sizeof(HostDiscountTable) == 1411);
static_assert(sizeof(OptionRecord) == 1797);
static_assert(sizeof(TerminalRecord) == 446);
static_assert(sizeof(TerminalAnswer) == 433);
static_assert(sizeof(ServiceGuideBlock) == 1920);
static_assert(sizeof(BreakList) == 379);
static_assert(sizeof(EfcRecord) == 17);
static_assert(sizeof(EngineTablesSection) == 204);
static_assert(sizeof(EngineTablesRecord) == 222);
static_assert(sizeof(EngineVersionBlock) == 108);
static_assert(sizeof(EngineClassLine) == 30);
static_assert(sizeof(EngineDiscountLine) == 54);
static_assert(sizeof(EngineRateRecord) == 2160);
static_assert(sizeof(EngineResultBlock) == 976);
static_assert(sizeof(EngineAlternative) == 20);
static_assert(sizeof(EngineListBlock) == 816);
static_assert(sizeof(RateContext) == 92473 + kPointersInRecord * kWiderBy);

HWT_AT(RateContext, Zf1Handle, 0, 0);
HWT_AT(RateContext, HostArea1, 16, 0);
HWT_AT(RateContext, FacHandle, 28, 0);
HWT_AT(RateContext, LabStream, 68, 0);
HWT_AT(RateContext, MchTable, 76, 2);
HWT_AT(RateContext, CozCount, 100, 8);
HWT_AT(RateContext, HostArea4, 112, 10);
HWT_AT(RateContext, Zf1Count, 202, 10);
HWT_AT(RateContext, ErrorCode, 250, 10);
HWT_AT(RateContext, AccRecords, 278, 10);
HWT_AT(RateContext, LevelTable, 12578, 10);
HWT_AT(RateContext, CrossBorder, 12590, 11);
HWT_AT(RateContext, ZmcMinimumDollars, 12634, 11);
HWT_AT(RateContext, ZmcFloor, 12650, 11);
HWT_AT(RateContext, EntryDiscountPercent, 12698, 11);
HWT_AT(RateContext, EngineRateTable, 12717, 11);
HWT_AT(RateContext, Zf1DataOffset, 15589, 11);
HWT_AT(RateContext, UserDir, 15629, 11);
HWT_AT(RateContext, FileBase, 16149, 11);
HWT_AT(RateContext, TariffLabel1, 16164, 11);
HWT_AT(RateContext, TableNames, 16290, 11);
HWT_AT(RateContext, EfcTable, 16690, 11);
HWT_AT(RateContext, WgtRecords, 16698, 12);
HWT_AT(RateContext, Zp6Table, 16895, 12);
HWT_AT(RateContext, Zf1Keys, 16907, 15);
HWT_AT(RateContext, Zf2Entries, 49107, 15);
HWT_AT(RateContext, RteFallback, 49115, 16);
HWT_AT(RateContext, EngineModule, 49131, 16);
HWT_AT(RateContext, ServiceGuideModule, 49139, 17);
HWT_AT(RateContext, ClassWeightsSet, 49147, 18);
HWT_AT(RateContext, TariffName, 49431, 18);
HWT_AT(RateContext, QuietEngineErrors, 49464, 18);
HWT_AT(RateContext, ScTable, 49468, 18);
HWT_AT(RateContext, WeightBreakTotal, 53485, 18);
HWT_AT(RateContext, ProfileTurnedOff, 53497, 18);
HWT_AT(RateContext, NameTablesLoaded, 53584, 18);
HWT_AT(RateContext, Acc232Index, 53590, 18);
HWT_AT(RateContext, SetRecord, 54390, 18);
HWT_AT(RateContext, DefRecord, 54673, 18);
HWT_AT(RateContext, DiscRecord, 55021, 18);
HWT_AT(RateContext, OrigZip, 55642, 18);
HWT_AT(RateContext, DestZip, 55686, 18);
HWT_AT(RateContext, RateCode, 55730, 18);
HWT_AT(RateContext, LineClass, 55769, 18);
HWT_AT(RateContext, LineWeightIndex, 55913, 18);
HWT_AT(RateContext, LineRateText, 55945, 18);
HWT_AT(RateContext, ExtraWeightText, 56150, 18);
HWT_AT(RateContext, GrossChargeText, 56189, 18);
HWT_AT(RateContext, SurchargeText, 56235, 18);
HWT_AT(RateContext, NetChargeText, 56261, 18);
HWT_AT(RateContext, MinChargeText, 56291, 18);
HWT_AT(RateContext, DiscountSource, 56352, 18);
HWT_AT(RateContext, ClassTable, 56354, 18);
HWT_AT(RateContext, WeightBreakMax, 56698, 18);
HWT_AT(RateContext, BreakLists, 56862, 18);
HWT_AT(RateContext, EngineVersionA, 59136, 18);
HWT_AT(RateContext, SccTable, 59205, 18);
HWT_AT(RateContext, McConvertIn, 59233, 19);
HWT_AT(RateContext, FacRecord, 59277, 19);
HWT_AT(RateContext, BseHeader, 61431, 19);
HWT_AT(RateContext, BseBody, 63715, 19);
HWT_AT(RateContext, LabIndex, 64123, 19);
HWT_AT(RateContext, LamTable, 68859, 19);
HWT_AT(RateContext, AdjKeys, 71186, 19);
HWT_AT(RateContext, ZpsRecord, 72386, 19);
HWT_AT(RateContext, ZmcRecord, 72483, 20);
HWT_AT(RateContext, Profile, 72524, 20);
HWT_AT(RateContext, OrigTerminalRecord, 90421, 20);
HWT_AT(RateContext, MefRecord, 91313, 20);
HWT_AT(RateContext, EngineListHeader, 91946, 20);
HWT_AT(RateContext, EngineList, 91956, 20);
HWT_AT(RateContext, ProfilesInDataDir, 92459, 20);
HWT_AT(RateContext, BlankUnknownTerminals, 92472, 20);

HWT_WITHIN(SetRecord, ZipLength, 163);
HWT_WITHIN(SetRecord, LabFilesFlag, 168);
HWT_WITHIN(SetRecord, Zp7FileFlag, 174);
HWT_WITHIN(SetRecord, AccFileFlag, 197);
HWT_WITHIN(SetRecord, NoBaseTablesFlag, 199);
HWT_WITHIN(SetRecord, OptionFlag3, 201);
HWT_WITHIN(SetRecord, McaFileFlag, 203);
HWT_WITHIN(SetRecord, OptionFlag5, 205);
HWT_WITHIN(SetRecord, SkipZipTablesFlag, 207);
HWT_WITHIN(SetRecord, NoBseFlag, 209);
HWT_WITHIN(SetRecord, OptionFlag8, 211);
HWT_WITHIN(SetRecord, OptionFlag9, 213);
HWT_WITHIN(SetRecord, TariffSourceCode, 215);
HWT_WITHIN(SetRecord, SurchargeOnGross, 234);
HWT_WITHIN(SetRecord, SetByte255, 255);
HWT_WITHIN(SetRecord, SetByte260, 260);
HWT_WITHIN(SetRecord, NoFlatDiscountFlag, 270);
HWT_WITHIN(DefRecord, DefModeP1, 6);
HWT_WITHIN(DefRecord, DefModeP2, 8);
HWT_WITHIN(DefRecord, ConversionOn, 10);
HWT_WITHIN(DefRecord, SurchargeOn, 12);
HWT_WITHIN(DefRecord, DiscountOn, 16);
HWT_WITHIN(DefRecord, DefByte31, 31);
HWT_WITHIN(DefRecord, DefModeCFlag, 33);
HWT_WITHIN(DefRecord, ConversionRate, 35);
HWT_WITHIN(DefRecord, DefFactorLow, 41);
HWT_WITHIN(DefRecord, RateFactor, 45);
HWT_WITHIN(DefRecord, DefSavedBytes, 150);
HWT_WITHIN(DefRecord, DefModeP3, 252);
HWT_WITHIN(DefRecord, DefModeZ, 254);
HWT_WITHIN(DefRecord, DefFactorHigh, 256);
HWT_WITHIN(DefRecord, DefLayoutMark, 260);
HWT_WITHIN(DefRecord, DefBreakIndex, 262);
HWT_WITHIN(DefRecord, ProfileIndex, 266);
HWT_WITHIN(DefRecord, DefBreakCount, 268);
HWT_WITHIN(DefRecord, ProfileFileCurrent, 272);
HWT_WITHIN(DiscRecord, DisMethod, 0);
HWT_WITHIN(DiscRecord, DisGroupSelector, 88);
HWT_WITHIN(DiscRecord, DisWeightColumns, 112);
HWT_WITHIN(DiscRecord, DisColumns, 337);

HWT_AT(ProfileRecord, ClassMapOn, 31, 0);
HWT_AT(ProfileRecord, ClassMap, 35, 0);
HWT_AT(ProfileRecord, SavedSurchargeOn, 107, 0);
HWT_AT(ProfileRecord, SavedFactorHigh, 113, 0);
HWT_AT(ProfileRecord, SavedDef172, 119, 0);
HWT_AT(ProfileRecord, SavedDef159, 129, 0);
HWT_AT(ProfileRecord, SavedDef161, 140, 0);
HWT_AT(ProfileRecord, DiscModeP, 149, 0);
HWT_AT(ProfileRecord, DiscountValues, 155, 0);
HWT_AT(ProfileRecord, ZipDiscounts, 243, 0);
HWT_AT(ProfileRecord, ZipDiscountCount, 17793, 0);
HWT_AT(ProfileRecord, AltSurchargeOn, 17797, 0);
HWT_AT(ProfileRecord, Reserved2, 17807, 0);
HWT_AT(OptionRecord, OptName, 4, 0);
HWT_AT(OptionRecord, OptionByte29, 29, 0);
HWT_AT(OptionRecord, OptionBlock205, 205, 0);
HWT_AT(OptionRecord, OptionText212, 212, 0);
HWT_AT(OptionRecord, OptionBlock472, 472, 0);
HWT_AT(OptionRecord, OptionValue492, 492, 0);
HWT_AT(OptionRecord, OptionBlock498, 498, 0);
HWT_AT(OptionRecord, OptionText973, 973, 0);
HWT_AT(OptionRecord, OptionValue1233, 1233, 0);
HWT_AT(OptionRecord, Reserved1411, 1411, 0);
HWT_AT(OptionRecord, OptionByte1422, 1422, 0);
HWT_AT(OptionRecord, Reserved1432, 1432, 0);
HWT_AT(EngineRateRecord, Status, 3, 0);
HWT_AT(EngineRateRecord, RequestKind, 7, 0);
HWT_AT(EngineRateRecord, TariffName, 11, 0);
HWT_AT(EngineRateRecord, OptionCode, 19, 0);
HWT_AT(EngineRateRecord, TariffDate, 20, 0);
HWT_AT(EngineRateRecord, OrigZip, 30, 0);
HWT_AT(EngineRateRecord, OrigState, 36, 0);
HWT_AT(EngineRateRecord, OrigCity, 38, 0);
HWT_AT(EngineRateRecord, DestZip, 55, 0);
HWT_AT(EngineRateRecord, DestState, 61, 0);
HWT_AT(EngineRateRecord, DestCity, 63, 0);
HWT_AT(EngineRateRecord, RequestCode, 80, 0);
HWT_AT(EngineRateRecord, RateCode, 90, 0);
HWT_AT(EngineRateRecord, TotalWeight, 101, 0);
HWT_AT(EngineRateRecord, BilledWeight, 107, 0);
HWT_AT(EngineRateRecord, MinChargeFirst, 113, 0);
HWT_AT(EngineRateRecord, ExtraRate, 120, 0);
HWT_AT(EngineRateRecord, ExtraWeight, 127, 0);
HWT_AT(EngineRateRecord, ExtraCharge, 133, 0);
HWT_AT(EngineRateRecord, NetCharge, 142, 0);
HWT_AT(EngineRateRecord, ShipmentOption, 177, 0);
HWT_AT(EngineRateRecord, DiscountsSent, 194, 0);
HWT_AT(EngineRateRecord, OrigServiceCode, 196, 0);
HWT_AT(EngineRateRecord, DiscountOption, 214, 0);
HWT_AT(EngineRateRecord, DiscountAmount, 220, 0);
HWT_AT(EngineRateRecord, MinChargeSecond, 229, 0);
HWT_AT(EngineRateRecord, Factor, 236, 0);
HWT_AT(EngineRateRecord, DiscountPercent, 241, 0);
HWT_AT(EngineRateRecord, LineEnd, 263, 0);
HWT_AT(EngineRateRecord, ClassLines, 265, 0);
HWT_AT(EngineRateRecord, DiscountLine, 865, 0);
HWT_AT(EngineRateRecord, IncreaseLine, 919, 0);
HWT_AT(EngineRateRecord, Blanks1, 973, 0);
HWT_AT(EngineRateRecord, RateTable, 976, 0);
HWT_AT(EngineRateRecord, Tables, 1676, 0);
HWT_AT(EngineRateRecord, BreakKinds, 1880, 0);
HWT_AT(EngineRateRecord, BreakWeights, 1912, 0);
HWT_AT(EngineRateRecord, BreakAmounts, 2032, 0);
HWT_AT(EngineRateRecord, Zero, 2152, 0);
HWT_AT(EngineRateRecord, BreakEntryCount, 2154, 0);
HWT_AT(EngineRateRecord, Blanks2, 2156, 0);
HWT_AT(EngineRateRecord, EndMark, 2159, 0);

HWT_AT(HostDiscountTable, TableType, 1233, 0);
HWT_AT(HostDiscountTable, Groups, 1235, 0);
HWT_AT(ServiceGuideBlock, SetByte255, 7, 0);
HWT_AT(ServiceGuideBlock, SetByte260, 11, 0);
HWT_AT(ServiceGuideBlock, DataDirectory, 29, 0);
HWT_AT(ServiceGuideBlock, FirstZip, 570, 0);
HWT_AT(ServiceGuideBlock, FirstTerminal, 632, 0);
HWT_AT(ServiceGuideBlock, SecondServiceCode, 643, 0);
HWT_AT(ServiceGuideBlock, ValueC, 645, 0);
HWT_AT(ServiceGuideBlock, TerminalZip, 1467, 0);
HWT_AT(ServiceGuideBlock, Terminal, 1473, 0);
// clang-format on

}  // namespace
