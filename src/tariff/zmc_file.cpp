#include "tariff/zmc_file.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "tariff/resident_file.h"
#include "tariff/zmc_index.h"

namespace hundredweight {
namespace {

constexpr int32_t kRecordsPerRead = 200;
constexpr int64_t kRecordSize = sizeof(ZmcFileRecord);

/// The records of a file with their index.
struct ZmcTable {
    Block<ZmcFileRecord> records;
    uint32_t count;
    ZmcTree one_way, either_way;
};

/// The table of the file that was looked at last: one copy for the whole process.
ResidentFile<ZmcTable> resident_table;

std::optional<ZmcTable> MakeTable(const OpenFile& file) {
    if (file.length() > static_cast<int64_t>(kLargestCopy)) return std::nullopt;
    const auto count = static_cast<uint32_t>(file.length() / kRecordSize);
    const std::size_t size = count * sizeof(ZmcFileRecord);
    Block<ZmcFileRecord> records = AllocateBlock<ZmcFileRecord>(size);
    if (!records || platform::ReadBytesAt(file.handle(), 0, records.get(), size) < size) {
        return std::nullopt;
    }
    std::optional<ZmcTree> one_way = ZmcTree::Make(records.get(), count, true);
    std::optional<ZmcTree> either_way = ZmcTree::Make(records.get(), count, false);
    if (!one_way || !either_way) return std::nullopt;
    return ZmcTable{std::move(records), count, std::move(*one_way), std::move(*either_way)};
}

ZmcOutcome FindInTable(const ZmcTable& table, int32_t count, const ZmcKey& key,
                       ZmcFileRecord& record) {
    const uint32_t end = std::min(table.count, static_cast<uint32_t>(std::max(count, 0)));
    if (end == 0) return ZmcOutcome::kNoRecords;
    const ZmcFileRecord* const records = table.records.get();
    const uint32_t first = table.either_way.FirstBelow(
        table.one_way.FirstBelow(end, records, key.one_way), records, key.either_way);
    record = records[std::min(first, end - 1)];
    return first < end ? ZmcOutcome::kMatch : ZmcOutcome::kNoMatch;
}

ZmcOutcome FindInFile(const OpenFile& file, int32_t count, const ZmcKey& key,
                      ZmcFileRecord& record) {
    ZmcFileRecord records[kRecordsPerRead];
    ZmcOutcome outcome = ZmcOutcome::kNoRecords;
    for (int32_t done = 0; done < count;) {
        const auto wanted = static_cast<std::size_t>(std::min(count - done, kRecordsPerRead));
        const std::size_t arrived = platform::ReadBytesAt(file.handle(), done * kRecordSize,
                                                          records, wanted * sizeof(ZmcFileRecord)) /
                                    sizeof(ZmcFileRecord);
        for (std::size_t i = 0; i < arrived; ++i) {
            if (!Contain(RangesOf(records[i]), key.Of(records[i]))) continue;
            record = records[i];
            return ZmcOutcome::kMatch;
        }
        if (arrived > 0) {
            record = records[arrived - 1];
            outcome = ZmcOutcome::kNoMatch;
        }
        if (arrived < wanted) break;
        done += static_cast<int32_t>(arrived);
    }
    return outcome;
}

}  // namespace

int32_t CountZmcRecords(const RateContext& context) {
    const OpenFile file = OpenDataFile(context, ".ZMC");
    if (!file) return 0;
    return static_cast<int32_t>(
        std::min<int64_t>(file.length() / kRecordSize, std::numeric_limits<int32_t>::max()));
}

ZmcOutcome FindZmcRecord(const RateContext& context, const ZmcKey& key, ZmcFileRecord& record) {
    const PathText path = SetPathInDataDir(context, ".ZMC");
    const ZmcTable* table = resident_table.CopyAt(path);
    if (table != nullptr) return FindInTable(*table, context.ZmcCount, key, record);
    const OpenFile file = OpenForReading(path);
    if (!file) return ZmcOutcome::kNoRecords;
    table = resident_table.CopyOf(file, MakeTable);
    return table != nullptr ? FindInTable(*table, context.ZmcCount, key, record)
                            : FindInFile(file, context.ZmcCount, key, record);
}

void ReleaseZmcFile() {
    resident_table.Release();
}

}  // namespace hundredweight
