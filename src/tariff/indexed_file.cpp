#include "tariff/indexed_file.h"

#include <limits>
#include <utility>

#include "tariff/record_fields.h"

namespace hundredweight {
namespace {

constexpr int32_t kNoRateFile = 350;

// Layout: the entry count N in 2 bytes, N keys of 2 bytes, N entries of 4 bytes that stay on disk,
// N entries of 3 or 6 bytes, the data area.
constexpr int32_t kCountSize = 2;
constexpr int32_t kKeySize = 2;
constexpr int32_t kUnreadSize = 4;

struct IndexedFile {
    const char* extension;
    int32_t capacity;    ///< Entries that the record has room for.
    int32_t entry_size;  ///< Of the last array.
    FieldOffset handle;
    FieldOffset count;
    FieldOffset keys;
    FieldOffset entries;
    bool entries_in_block;  ///< The field of the entries is a pointer.
    FieldOffset data_offset;
    FieldOffset length;
    int32_t open_code;
    int32_t read_code;
};

#define HWT_INDEXED_FILE(name) \
    HWT_FIELD(name##Handle), HWT_FIELD(name##Count), HWT_FIELD(name##Keys), HWT_FIELD(name##Entries)
#define HWT_INDEX_PLACES(name) HWT_FIELD(name##DataOffset), HWT_FIELD(name##Length)

constexpr IndexedFile kZf1 = {".ZF1", 2800, 3, HWT_INDEXED_FILE(Zf1), false, HWT_INDEX_PLACES(Zf1),
                              390,    394};
constexpr IndexedFile kZf2 = {".ZF2", 2100, 6, HWT_INDEXED_FILE(Zf2), true, HWT_INDEX_PLACES(Zf2),
                              410,    414};
constexpr IndexedFile kZfm = {".ZFM", 2800, 3, HWT_INDEXED_FILE(Zfm), false, HWT_INDEX_PLACES(Zfm),
                              456,    457};

bool ReadWhole(const OpenFile& file, void* to, int32_t size) {
    const auto wanted = static_cast<std::size_t>(size);
    return platform::ReadBytes(file.handle(), to, wanted) == wanted;
}

bool ReadEntries(RateContext& context, const IndexedFile& facts, const OpenFile& file,
                 int32_t size) {
    if (!facts.entries_in_block) return ReadWhole(file, FieldAt(context, facts.entries), size);
    Block<> block = AllocateBlock(static_cast<std::size_t>(size));
    const bool read = block && ReadWhole(file, block.get(), size);
    StoreBlock(context, facts.entries, std::move(block));
    return read;
}

/// Reads count and arrays. An index that the record has no room for cannot be read.
bool ReadIndex(RateContext& context, const IndexedFile& facts, const OpenFile& file) {
    uint16_t count = 0;
    if (!ReadWhole(file, &count, kCountSize)) return false;
    const bool has_room = count <= facts.capacity;
    StoreNumber(context, facts.count, has_room ? count : 0);
    const int32_t entries_at = kCountSize + (kKeySize + kUnreadSize) * count;
    const int32_t entries_size = facts.entry_size * count;
    if (!has_room || file.length() > std::numeric_limits<int32_t>::max() ||
        !ReadWhole(file, FieldAt(context, facts.keys), kKeySize * count) ||
        !platform::SeekTo(file.handle(), entries_at) ||
        !ReadEntries(context, facts, file, entries_size)) {
        return false;
    }
    StoreNumber(context, facts.data_offset, entries_at + entries_size);
    StoreNumber(context, facts.length, static_cast<int32_t>(file.length()));
    return true;
}

int32_t ReadIndexedFile(RateContext& context, const IndexedFile& facts) {
    ResetHandleField(context, facts.handle);
    OpenFile file = OpenDataFile(context, facts.extension);
    if (!file) return Fail(context, facts.open_code);
    if (!ReadIndex(context, facts, file)) return Fail(context, facts.read_code);
    StoreHandle(context, facts.handle, std::move(file));
    return 1;
}

/// Looks which of the two rate files the set has.
int32_t ProbeRateFile(RateContext& context) {
    context.RclInUse = 0;
    context.RclInUse2 = 0;
    context.RtcHandle = -1;
    if (HasDataFile(context, ".RTC")) return 1;
    if (!HasDataFile(context, ".RCL")) return Fail(context, kNoRateFile);
    context.RclInUse = 1;
    context.RclInUse2 = 1;
    return 1;
}

}  // namespace

int32_t ReadZf1File(RateContext& context) {
    return ReadIndexedFile(context, kZf1);
}

int32_t ReadZfmFile(RateContext& context) {
    return ReadIndexedFile(context, kZfm);
}

int32_t ReadZf2File(RateContext& context) {
    return ReadIndexedFile(context, kZf2) == 1 ? ProbeRateFile(context) : 0;
}

}  // namespace hundredweight
