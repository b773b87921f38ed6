#include "tariff/base_rates.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "frame/numbers.h"
#include "frame/text.h"
#include "tariff/record_fields.h"
#include "tariff/whole_file.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotOpenBse = 220;
constexpr int32_t kCannotReadBse = 224;
constexpr int32_t kFirstLongHeaderVersion = 22;
constexpr std::size_t kBodyOffsetAt = 32;
constexpr std::size_t kBodyLengthAt = 36;

constexpr std::size_t kWsmHeader = 7;
constexpr int32_t kWsmEntry = 4;

template <std::size_t Size>
bool ReadField(const OpenFile& file, char (&field)[Size], std::size_t size = Size) {
    return platform::ReadBytes(file.handle(), field, size) == size;
}

/// Reads the body that a header locates. One that the record has no room for cannot be read.
bool ReadBody(RateContext& context, const OpenFile& file, const char* header) {
    const auto offset = LoadLittleEndian<int32_t>(header + kBodyOffsetAt);
    const auto length = LoadLittleEndian<int32_t>(header + kBodyLengthAt);
    if (offset < 0 || length < 0 || length > static_cast<int32_t>(sizeof(RateContext::BseBody))) {
        return false;
    }
    return platform::SeekTo(file.handle(), offset) &&
           ReadField(file, context.BseBody, static_cast<std::size_t>(length));
}

bool ReadHeaderAndBody(RateContext& context, const OpenFile& file) {
    if (context.SetVersion >= kFirstLongHeaderVersion) {
        return ReadField(file, context.BseHeader) && ReadBody(context, file, context.BseHeader);
    }
    return ReadField(file, context.BseHeaderOld) && ReadBody(context, file, context.BseHeaderOld);
}

}  // namespace

int32_t ReadBseFile(RateContext& context) {
    ResetHandleField(context, HWT_FIELD(BseHandle));
    OpenFile file = OpenDataFile(context, ".BSE");
    if (!file) return Fail(context, kCannotOpenBse);
    if (!ReadHeaderAndBody(context, file)) return Fail(context, kCannotReadBse);
    StoreHandle(context, HWT_FIELD(BseHandle), std::move(file));
    return 1;
}

void ReadWsmFile(RateContext& context) {
    FreeBlockField(context, HWT_FIELD(WsmTable));
    context.WsmCount = 0;
    context.WsmValue = -1;
    const OpenFile file = OpenDataFile(context, ".WSM");
    if (!file || file.length() < static_cast<int64_t>(kWsmHeader)) return;
    WholeFile whole = ReadWholeFile(file);
    const int32_t entries_size = whole.length - static_cast<int32_t>(kWsmHeader);
    if (whole.length > 0) context.WsmCount = entries_size / kWsmEntry;
    if (!whole.block) return;
    unsigned char* const bytes = whole.block.get();
    if (whole.arrived >= kWsmHeader) {
        context.WsmValue =
            ReadInteger(TerminatedText(reinterpret_cast<const char*>(bytes), kWsmHeader));
    }
    std::memmove(bytes, bytes + kWsmHeader, static_cast<std::size_t>(entries_size));
    StoreBlock(context, HWT_FIELD(WsmTable), std::move(whole.block));
}

}  // namespace hundredweight
