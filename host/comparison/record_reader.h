// Records of CSV, which may go over several lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "comparison/line_reader.h"

namespace cwt {

struct Record {
    std::vector<std::string> fields;
    std::vector<std::size_t> columns;  ///< Where each begins, in bytes from 1.
};

class RecordReader {
 public:
    explicit RecordReader(const std::string& path) : lines_(path) {}

    /// Result: false at the end. Throws Broken for quotes that are none.
    bool Next(Record& record);

    /// Throws Broken for what is wrong in the record that was read last.
    [[noreturn]] void Break(std::size_t column, const std::string& text) const {
        lines_.Break(first_line_, column, text);
    }

 private:
    std::string_view Join(std::string_view first);
    void Split(std::string_view line, Record& record) const;
    std::size_t TakePlain(std::string_view line, std::size_t at, std::string& field) const;
    std::size_t TakeQuoted(std::string_view line, std::size_t at, std::string& field) const;

    LineReader lines_;
    int64_t first_line_ = 0;
    std::string joined_;
};

}  // namespace cwt
