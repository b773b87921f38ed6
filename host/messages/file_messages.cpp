#include "messages/message_entry.h"

namespace cwt {
namespace {

constexpr const char* kNotOpened =
    "is not in the data directory, or may not be read, or its path has more than 259 characters.";
constexpr const char* kNoMemory = "does not fit into memory, or has 2 GiB or more.";
constexpr const char* kNotWhole =
    "gave fewer bytes than its size tells: the disk fails, or the file was cut meanwhile.";
constexpr const char* kTooShort = "is shorter than its record of {} bytes.";
constexpr const char* kNoRecord = "has no whole record of {} bytes.";
constexpr const char* kNotIndexed =
    "is shorter than the number of entries in its first two bytes asks for, or that number is "
    "higher than the library has room for.";
constexpr const char* kNotCreated =
    "could not be created or replaced: the directory, or the file that is there, may not be "
    "written; or another process has kept the directory's turn for ten seconds.";
constexpr const char* kNotWritten = "could not be written whole; what was there stands as it was.";
constexpr const char* kMakeRoom =
    "Look for room on the disk (`df`) and for the rights of directory and file (`ls -l`), and let "
    "the host write again.";
constexpr const char* kMayBeSo =
    "Nothing, when the set is meant to be so. Otherwise copy the file from where the set came "
    "from, or build the set from its folder of text.";

constexpr MessageEntry kSet[] = {
    {150, "COZ",
     "does not fit into memory, or has 2 GiB or more. No load reads it, but a host may.", nullptr},
    {151, "COZ", "gave fewer bytes than its size tells. No load reads it, but a host may.",
     nullptr},
    {168, "ZP6", kNoMemory, nullptr},
    {225, "BSV", kTooShort, nullptr},
    {240, "DEF",
     "is neither in the user's nor in the data directory, or may not be read. A set "
     "may have no defaults: `cwt` goes on when there are none.",
     kMayBeSo},
    {244, "DEF", kTooShort, nullptr},
    {250, "DIS",
     "is neither in the current nor in the data directory, or may not be read. A set "
     "may have no discounts: `cwt` goes on when there are none.",
     kMayBeSo},
    {254, "DIS", kTooShort, nullptr},
    {269, "DCH", "is missing, may not be read, or gave fewer bytes than its size tells.", nullptr},
    {300, "LVL", kNotOpened, nullptr},
    {302, "LVL", kNoMemory, nullptr},
    {304, "LVL", kNotWhole, nullptr},
    {360, "SC",
     "is not there, or may not be read. The load goes on, and the engine tells the states of "
     "postal codes, unless the set's `tariff_source` is N.",
     kMayBeSo},
    {364, "SC", "is shorter than its {} bytes. A host goes on without it; `cwt` does not.",
     nullptr},
    {370, "SET", kNotOpened, nullptr},
    {374, "SET", kTooShort, nullptr},
    {380, "WGT",
     "is not there, or may not be read. With an engine the load goes on, and the engine gives the "
     "weight breaks.",
     nullptr},
    {384, "WGT", "has fewer than nine weight breaks. The load goes on with those.", kMayBeSo},
    {385, "WGT", "has no whole record of {} bytes. With an engine the load goes on.", nullptr},
    {436, "ZP6",
     "is not in the data directory, or may not be read. With a profile it is the profile's own "
     "table, `PROFILE.ZP6` by its name: without one the set's serves, and `cwt` notes it.",
     nullptr},
    {438, "ZP6", kNotWhole, nullptr},
    {444, "ZPS", kTooShort, nullptr},
    {460, "SCC", "is missing, may not be read, or gave fewer bytes than its size tells.",
     "Put the file back, or let the settings say that the set has no ZIP tables: "
     "`skip_zip_tables` yes in `settings.json`."},
    {464, "SCC",
     "gave fewer bytes than its size tells, in a set with `skip_zip_tables` yes. The load goes on "
     "with what came.",
     nullptr},
    {490, "ACC", kNotOpened,
     "Put the file back, or let the settings say that the set has none: `accessorial_file` no in "
     "`settings.json`."},
    {494, "ACC", kNoRecord, nullptr},
};

constexpr MessageEntry kOwnTables[] = {
    {181, nullptr, "Neither `NAME.LMC` nor `NAME.MC`, minimum charges, can be opened.", nullptr},
    {182, "MCH", kNotOpened, nullptr},
    {183, nullptr, "Neither `NAME.LCA` nor `NAME.MCA`, second minimum charges, can be opened.",
     nullptr},
    {193, "MCH", kNoMemory, nullptr},
    {210, "ADJ", kNotOpened, nullptr},
    {214, "ADJ", kNotWhole, nullptr},
    {220, "BSE", kNotOpened, nullptr},
    {224, "BSE",
     "is shorter than its header or the body that the header tells of; or that body has more than "
     "336 bytes.",
     nullptr},
    {230, "CLS", kNotOpened, nullptr},
    {235, "CLS", kNoRecord, nullptr},
    {260, nullptr, "`NAME.FAC` or `NAME.FCC`, factors, cannot be opened.", nullptr},
    {264, nullptr,
     "`NAME.FAC`, factors, is shorter than its record of 802 bytes, or `NAME.FCC` than its of "
     "1352.",
     nullptr},
    {270, "LA", kNotOpened, nullptr},
    {272, "LA", kNoMemory, nullptr},
    {274, "LA", kNotWhole, nullptr},
    {280, "LAB", kNotOpened, nullptr},
    {284, "LAB", "could not be read to its end: the disk fails.", nullptr},
    {290, "LAM", kNotOpened, nullptr},
    {312, nullptr, "`NAME.LMC` or `NAME.MC`, minimum charges, does not fit into memory.", nullptr},
    {314, nullptr,
     "`NAME.LMC` or `NAME.MC`, minimum charges, gave fewer bytes than its size tells.", nullptr},
    {324, "MCH", kNotWhole, nullptr},
    {340, "RBA", kNotOpened, nullptr},
    {342, "RBA", kNoMemory, nullptr},
    {344, "RBA", kNotWhole, nullptr},
    {350, nullptr,
     "Neither `NAME.RTC` nor `NAME.RCL` can be opened, or neither `NAME.RTE` nor `NAME.RTL`.",
     nullptr},
    {362, nullptr, "`NAME.LCA` or `NAME.MCA`, second minimum charges, does not fit into memory.",
     nullptr},
    {390, "ZF1", kNotOpened, nullptr},
    {394, "ZF1", kNotIndexed, nullptr},
    {410, "ZF2", kNotOpened, nullptr},
    {414, "ZF2", kNotIndexed, nullptr},
    {450, "TBL", kNotOpened, nullptr},
    {456, "ZFM", kNotOpened, nullptr},
    {457, "ZFM", kNotIndexed, nullptr},
    {480, "BSC", kNotOpened, nullptr},
    {484, "BSC", kTooShort, nullptr},
    {534, nullptr,
     "`NAME.LCA` or `NAME.MCA`, second minimum charges, gave fewer bytes than its size tells.",
     nullptr},
    {582, "ZP7", kNotOpened, nullptr},
    {583, "ZP7", kNoMemory, nullptr},
    {584, "ZP7", kNotWhole, nullptr},
};

constexpr MessageEntry kWrittenFiles[] = {
    {160, "MEF", kNotCreated, kMakeRoom}, {161, "MEF", kNotWritten, kMakeRoom},
    {241, "DEF", kNotCreated, kMakeRoom}, {245, "DEF", kNotWritten, kMakeRoom},
    {246, "ACC", kNotWritten, kMakeRoom}, {520, "ACC", kNotCreated, kMakeRoom},
};

}  // namespace

const std::span<const MessageEntry> kSetMessages = kSet;
const std::span<const MessageEntry> kOwnTableMessages = kOwnTables;
const std::span<const MessageEntry> kWrittenFileMessages = kWrittenFiles;

}  // namespace cwt
