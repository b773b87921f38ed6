// The host's named option records: conversion from the older layout, and search by name.
#include <hundredweight/exports.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include "frame/block.h"
#include "frame/bytes.h"
#include "frame/text.h"
#include "platform/path.h"
#include "platform/replace_file.h"
#include "profiles/profile_directory.h"
#include "tariff/whole_file.h"

using namespace hundredweight;
using platform::WriteOutcome;

namespace {

constexpr std::size_t kRecordSize = sizeof(OptionRecord);
constexpr std::size_t kOldRecordSize = 1792;
constexpr int32_t kCurrentMarker = 1;
constexpr std::string_view kWorkingFile = "TEMPPRS.FIL";
constexpr std::string_view kBackupFile = "SAVEPRS.FIL";

/// A field that a conversion carries over. What no field names is 0 in a converted record.
struct CarriedField {
    std::size_t at;
    std::size_t size;
    std::size_t old_at;
};

#define HWT_CARRIED(field, old_at) \
    { offsetof(OptionRecord, field), sizeof(OptionRecord::field), old_at }

constexpr CarriedField kCarriedFields[] = {
    HWT_CARRIED(OptName, 0),
    HWT_CARRIED(OptionByte29, 25),
    HWT_CARRIED(OptionBlock30, 26),
    HWT_CARRIED(OptionBlock205, 201),
    HWT_CARRIED(OptionText212, 207),
    HWT_CARRIED(OptionBlock472, 467),
    HWT_CARRIED(OptionValue492, 487),
    HWT_CARRIED(OptionByte496, 491),
    HWT_CARRIED(OptionByte497, 492),
    HWT_CARRIED(OptionBlock498, 493),
    HWT_CARRIED(OptionByte972, 967),
    HWT_CARRIED(OptionText973, 968),
    HWT_CARRIED(OptionValue1233, 1228),
    HWT_CARRIED(OptionBlock1235, 1230),
    HWT_CARRIED(OptionByte1422, 1417),
    HWT_CARRIED(OptionBlock1423, 1418),
};

/// Layout by size; a file that fits both is current when every record bears the marker.
bool IsOldLayout(const WholeFile& options) {
    const auto size = static_cast<std::size_t>(options.length);
    if (size % kOldRecordSize != 0) return false;
    if (size == 0 || size % kRecordSize != 0) return true;
    for (std::size_t at = 0; at < size; at += kRecordSize) {
        if (LoadLittleEndian<int32_t>(options.block.get() + at) != kCurrentMarker) return true;
    }
    return false;
}

void ConvertRecord(const unsigned char* old_record, unsigned char* record) {
    std::memset(record, 0, kRecordSize);
    StoreLittleEndian(record, kCurrentMarker);
    for (const CarriedField& field : kCarriedFields) {
        std::memcpy(record + field.at, old_record + field.old_at, field.size);
    }
}

/// A name beside the option file; empty when it does not fit, or is the option file's own.
PathText PathBeside(std::string_view path, std::string_view file_name) {
    const platform::PathParts parts = platform::SplitPathParts(path);
    const std::size_t directory = parts.drive.size() + parts.directory.size();
    if (directory + file_name.size() > kLongestPath) return {};
    if (platform::IsSameName(path.substr(directory), file_name)) return {};
    return PathText(path.substr(0, directory)).Append(file_name);
}

/// Converts all records of a file of the older layout.
Block<> ConvertRecords(const WholeFile& options, std::size_t count) {
    Block<> converted = AllocateBlock(count * kRecordSize);
    for (std::size_t i = 0; converted && i < count; ++i) {
        ConvertRecord(options.block.get() + i * kOldRecordSize, converted.get() + i * kRecordSize);
    }
    return converted;
}

/// Replaces an option file of the older layout and keeps it as a backup. Result: false, and the
/// file as it was, when that cannot be finished.
bool Convert(const platform::DirectoryTurn& turn, const PathText& path, const WholeFile& options) {
    const PathText backup = PathBeside(path, kBackupFile);
    if (backup.empty() || PathBeside(path, kWorkingFile).empty()) return false;
    const auto old_size = static_cast<std::size_t>(options.length);
    const std::size_t count = old_size / kOldRecordSize;
    const Block<> records = ConvertRecords(options, count);
    if (!records) return false;
    platform::Replacement converted(turn, path.c_str(), kWorkingFile);
    platform::Replacement kept(turn, backup.c_str());
    // A link may lead the backup to the option file itself, which then is not replaced.
    if (platform::IsSameFile(kept.path(), converted.path())) return false;
    // The earlier backup is given up when the new content is safe.
    return converted.Write(records.get(), count * kRecordSize) == WriteOutcome::kWritten &&
           kept.Write(options.block.get(), old_size, converted.path()) == WriteOutcome::kWritten &&
           kept.TakeName() && converted.TakeName();
}

enum class Layout { kCurrent, kOld, kUnknown };

/// Tells the layout of an option file, which is read whole when its length may be of the older one.
Layout ReadLayout(const PathText& path, WholeFile& options) {
    const OpenFile file = OpenForUpdate(path);
    if (!file) return Layout::kUnknown;
    if (file.length() % static_cast<int64_t>(kOldRecordSize) != 0) return Layout::kCurrent;
    options = ReadWholeFile(file);
    if (options.outcome != LoadOutcome::kLoaded) return Layout::kUnknown;
    return IsOldLayout(options) ? Layout::kOld : Layout::kCurrent;
}

/// Makes sure that the file has the current layout. It is closed before it is replaced.
bool PrepareOptions(const PathText& path) {
    WholeFile options;
    const Layout layout = ReadLayout(path, options);
    if (layout != Layout::kOld) return layout == Layout::kCurrent;
    const platform::DirectoryTurn turn(path.c_str());
    // Another process may have converted the file meanwhile, and has kept the only backup.
    const Layout now = ReadLayout(path, options);
    return now == Layout::kCurrent || (now == Layout::kOld && Convert(turn, path, options));
}

/// Removes the white space behind the name in its field. Result: the name.
std::string_view TrimName(char (&field)[25]) {
    const std::string_view name = TerminatedText(field);
    const std::size_t length = name.find_last_not_of(kWhiteSpace) + 1;
    if (length < sizeof field) field[length] = '\0';
    return name.substr(0, length);
}

}  // namespace

int32_t HWT_CALL ReadFendroOpt(const char* path, void* record, const char* name) {
    if (std::strlen(path) > kLongestPath) return 0;
    const PathText option_file(path);
    if (!PrepareOptions(option_file)) return 0;
    const OpenFile file = OpenForUpdate(option_file);
    if (!file) return 0;
    OptionRecord& option = *static_cast<OptionRecord*>(record);
    while (platform::ReadBytes(file.handle(), &option, kRecordSize) == kRecordSize) {
        if (TrimName(option.OptName) == name) return 1;
    }
    return 0;
}
