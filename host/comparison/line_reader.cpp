#include "comparison/line_reader.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstring>

#include "session/messages.h"

namespace cwt {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;
constexpr std::size_t kLongestLine = std::size_t{16} << 20;

}  // namespace

LineReader::LineReader(const std::string& path)
    : path_(path), bytes_(OpenBytes(path)), buffer_(kBufferSize, '\0') {}

bool LineReader::Next(std::string_view& line) {
    std::size_t searched = 0;
    for (;;) {
        const char* const first = buffer_.data() + begin_;
        const std::size_t size = end_ - begin_;
        if (const void* const found = std::memchr(first + searched, '\n', size - searched)) {
            line = {first, static_cast<std::size_t>(static_cast<const char*>(found) - first)};
            begin_ += line.size() + 1;
            ++number_;
            return true;
        }
        searched = size;
        if (Fill()) continue;
        if (size == 0) return false;
        ++number_;
        Break(size + 1, "the last line has no end, so the file was cut");
    }
}

bool LineReader::Fill() {
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
    end_ -= begin_;
    begin_ = 0;
    if (end_ == buffer_.size()) {
        if (end_ >= kLongestLine) BreakLine(number_ + 1, "a line of more than 16 MiB");
        buffer_.resize(2 * end_);
    }
    const std::size_t count = bytes_->Read({buffer_.data() + end_, buffer_.size() - end_});
    end_ += count;
    return count > 0;
}

void LineReader::Break(std::size_t column, const std::string& text) const {
    throw Broken(fmt::format("{}: line {}, column {}: {}", path_, number_, column, text));
}

void LineReader::BreakLine(int64_t line, const std::string& text) const {
    throw Broken(fmt::format("{}: line {}: {}", path_, line, text));
}

}  // namespace cwt
