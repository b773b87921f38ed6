// Records of CSV, which may go over several lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "comparison/line_reader.h"

namespace cwt {

class RecordReader {
 public:
    explicit RecordReader(const std::string& path) : lines_(path) {}

    /// Result: false at the end. Throws Broken for quotes that are none.
    bool Next(std::vector<std::string>& fields);

    /// Throws Broken for what is wrong in the record that was read last.
    [[noreturn]] void Break(const std::string& text) const { lines_.BreakLine(first_line_, text); }

 private:
    std::string_view Join(std::string_view first);

    LineReader lines_;
    int64_t first_line_ = 0;
    std::string joined_;
};

}  // namespace cwt
