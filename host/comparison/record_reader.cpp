#include "comparison/record_reader.h"

#include <algorithm>

#include "text/csv.h"

namespace cwt {
namespace {

constexpr std::size_t kLongestRecord = std::size_t{16} << 20;

bool EndsWithinQuotes(std::string_view line) {
    return std::ranges::count(line, '"') % 2 != 0;
}

}  // namespace

bool RecordReader::Next(std::vector<std::string>& fields) {
    std::string_view line;
    if (!lines_.Next(line)) return false;
    first_line_ = lines_.number();
    if (first_line_ == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (EndsWithinQuotes(line)) line = Join(line);
    if (const std::string fault = SplitCsvRow(line, fields); !fault.empty()) Break(fault);
    return true;
}

/// The record with the lines that follow, up to the end of its quotes.
std::string_view RecordReader::Join(std::string_view first) {
    joined_ = first;
    std::string_view line;
    do {
        if (!lines_.Next(line) || joined_.size() > kLongestRecord) Break("quotes that do not end");
        joined_.append("\n").append(line);
    } while (!EndsWithinQuotes(line));
    return joined_;
}

}  // namespace cwt
