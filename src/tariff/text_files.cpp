#include "tariff/text_files.h"

#include <cstring>
#include <string_view>

#include "frame/bytes.h"
#include "frame/text.h"
#include "tariff/record_fields.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotOpenLab = 280;
constexpr int32_t kCannotReadLab = 284;
constexpr int32_t kCannotOpenLam = 290;

constexpr int kLinesInBlock = 20;
constexpr std::size_t kLabKeyAt = 5;  // In a block's last line.
constexpr std::size_t kLabKeyLength = 5;
constexpr std::string_view kLastLabKey = "ZZZZZ";  // Above all digits and capital letters.
constexpr int32_t kLabCapacity = sizeof(RateContext::LabIndex) / sizeof(RateContext::LabIndex[0]);
constexpr int32_t kLamCapacity = sizeof(RateContext::LamTable) / sizeof(RateContext::LamTable[0]);
constexpr char kEndOfText = '\x1A';

enum class BlockEnd { kMore, kEndOfFile, kError };

/// Reads the lines of a block, the last one into LabLine.
BlockEnd ReadLabBlock(RateContext& context) {
    for (int line = 0; line < kLinesInBlock; ++line) {
        FillField(context.LabLine, '\0');
        const bool read =
            std::fgets(context.LabLine, sizeof context.LabLine, context.LabStream) != nullptr;
        if (std::feof(context.LabStream) != 0) return BlockEnd::kEndOfFile;
        if (!read) return BlockEnd::kError;
    }
    return BlockEnd::kMore;
}

void PutLabKey(RateContext& context, int32_t entry, std::string_view key) {
    std::memcpy(context.LabIndex[entry], key.data(), kLabKeyLength);
}

/// Takes one line off a text, whose lines end in LF or CR LF and which a Ctrl-Z may end. A line
/// that fills the field goes on in the next one.
template <std::size_t Size>
bool TakeTextLine(std::string_view& text, char (&line)[Size]) {
    std::size_t length = 0;
    while (length < Size - 1 && !text.empty()) {
        if (text.front() == kEndOfText) {
            text = {};
            break;
        }
        if (text.starts_with("\r\n")) text.remove_prefix(1);
        line[length++] = text.front();
        text.remove_prefix(1);
        if (line[length - 1] == '\n') break;
    }
    if (length == 0) return false;
    line[length] = '\0';
    return true;
}

}  // namespace

int32_t ReadLabFile(RateContext& context) {
    CloseLabStream(context);
    context.LabStream = OpenTextFile(context, ".LAB");
    context.LabBlockCount = 0;
    if (context.LabStream == nullptr) return Fail(context, kCannotOpenLab);
    BlockEnd end = BlockEnd::kMore;
    while (end == BlockEnd::kMore && context.LabBlockCount < kLabCapacity) {
        const int32_t entry = context.LabBlockCount;
        StoreLittleEndian(context.LabIndex[entry] + kLabKeyLength,
                          static_cast<int32_t>(std::ftell(context.LabStream)));
        end = ReadLabBlock(context);
        if (end == BlockEnd::kError) {
            CloseLabStream(context);
            return Fail(context, kCannotReadLab);
        }
        PutLabKey(context, entry, WholeField(context.LabLine).substr(kLabKeyAt, kLabKeyLength));
        context.LabBlockCount = entry + 1;
    }
    PutLabKey(context, context.LabBlockCount - 1, kLastLabKey);
    return 1;
}

int32_t ReadLamFile(RateContext& context) {
    context.LamCount = 0;
    // A line shorter than its entry must not bring bytes of an earlier load.
    FillField(context.LamLine, '\0');
    context.LamStream = nullptr;
    const OpenFile file = OpenDataFile(context, ".LAM");
    if (!file) return Fail(context, kCannotOpenLam);
    char lines[kLamCapacity * sizeof context.LamLine];  // Of a line at most, a CR is dropped.
    std::string_view text(lines, file.ReadHead(lines, sizeof lines));
    while (context.LamCount < kLamCapacity && TakeTextLine(text, context.LamLine)) {
        CopyText(context.LamTable[context.LamCount++], WholeField(context.LamLine));
    }
    return 1;
}

void CloseLabStream(RateContext& context) {
    if (context.LabStream == nullptr) return;
    std::fclose(context.LabStream);
    context.LabStream = nullptr;
}

}  // namespace hundredweight
