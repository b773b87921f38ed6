#include "batch/row_source.h"

#include <stdexcept>

#include "files/digest.h"
#include "platform/system.h"

namespace cwt {
namespace {

constexpr std::size_t kMostRows = 256;
constexpr std::size_t kMostText = std::size_t{1} << 20;
constexpr std::size_t kLongestRow = ShipmentReader::kLongestRow;
constexpr std::size_t kChunk = std::size_t{1} << 18;

}  // namespace

RowSource::RowSource(const std::string& name, Form form, const std::vector<std::string>& allowed)
    : bytes_(OpenBytes(name)), reader_(MakeNdjsonReader()) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    FillUp();
    if (buffer_.starts_with(kByteOrderMark)) begin_ = kByteOrderMark.size();
    if (form != Form::kCsv) return;
    std::string_view row;
    if (NextRow(row)) header_ = row;
    reader_ = MakeCsvReader(header_, allowed);
    row_ = 1;
    digest_ = 0;
}

/// Has the longest row in the buffer, or all that is left. False at the end.
bool RowSource::FillUp() {
    buffer_.erase(0, begin_);
    begin_ = 0;
    while (!is_at_end_ && buffer_.size() <= kLongestRow) {
        const std::size_t before = buffer_.size();
        buffer_.resize(before + kChunk);
        const std::size_t count = bytes_->Read({buffer_.data() + before, kChunk});
        buffer_.resize(before + count);
        is_at_end_ = count < kChunk;
    }
    return !buffer_.empty();
}

void RowSource::SkipRestOfLine() {
    for (;;) {
        const std::size_t end = buffer_.find('\n', begin_);
        if (end != buffer_.npos) {
            begin_ = end + 1;
            return;
        }
        begin_ = buffer_.size();
        if (!FillUp()) return;
    }
}

/// The next row; of one that is too long, one byte more than is allowed.
bool RowSource::NextRow(std::string_view& row) {
    std::string_view rest = std::string_view(buffer_).substr(begin_);
    std::size_t length = reader_->RowEnd(rest, false);
    if (length == rest.npos) {
        if (!FillUp()) return false;
        rest = buffer_;
        length = reader_->RowEnd(rest.substr(0, kLongestRow), rest.size() <= kLongestRow);
        if (length == rest.npos) length = kLongestRow + 1;
    }
    row = rest.substr(0, length);
    begin_ += length;
    digest_ = Digest(digest_, row);
    const std::size_t line = row.find('\n');
    if (line != row.npos && line + 1 < row.size() && rows_of_lines_.rows++ == 0) {
        rows_of_lines_.first = row_;
    }
    ++row_;
    return true;
}

std::optional<Block> RowSource::Next(std::uint64_t end_row) {
    Block block;
    block.first_row = row_;
    for (std::string_view row; block.lengths.size() < kMostRows && block.text.size() < kMostText &&
                               row_ < end_row && NextRow(row);) {
        block.lengths.push_back(static_cast<std::uint32_t>(row.size()));
        block.text += row;
        if (row.size() > kLongestRow && !row.ends_with('\n')) SkipRestOfLine();
    }
    if (block.lengths.empty() || IsInterrupted()) return std::nullopt;
    block.digest = digest_;
    block.input_bytes = bytes_->position();
    return block;
}

std::uint64_t RowSource::SkipTo(std::uint64_t row) {
    while (row_ < row) {
        if (!Next(row)) throw std::runtime_error("the input has fewer rows than were rated");
    }
    return digest_;
}

}  // namespace cwt
