// The lines of a file of any length, some of it in memory at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "files/bytes_in.h"

namespace cwt {

class LineReader {
 public:
    /// Throws std::runtime_error, with the reason, when the file, packed or not, cannot be read.
    explicit LineReader(const std::string& path);

    /// The next line without its LF, valid until the next call. Result: false at the end. A last
    /// line without an end is one that was cut, and throws Broken.
    bool Next(std::string_view& line);

    /// Throws Broken for what is wrong in the line that was read last. Columns are bytes, from 1.
    [[noreturn]] void Break(std::size_t column, const std::string& text) const;

    /// Throws Broken for what is wrong in a line.
    [[noreturn]] void BreakLine(int64_t line, const std::string& text) const;

    int64_t number() const { return number_; }

 private:
    bool Fill();

    std::string path_;
    std::unique_ptr<BytesIn> bytes_;
    std::string buffer_;
    std::size_t begin_ = 0, end_ = 0;  ///< Of what is in the buffer and was not handed out.
    int64_t number_ = 0;
};

}  // namespace cwt
