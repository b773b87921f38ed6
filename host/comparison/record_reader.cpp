#include "comparison/record_reader.h"

#include <algorithm>

namespace cwt {
namespace {

constexpr std::size_t kLongestRecord = std::size_t{16} << 20;

}  // namespace

bool RecordReader::Next(Record& record) {
    std::string_view line;
    if (!lines_.Next(line)) return false;
    first_line_ = lines_.number();
    if (first_line_ == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (std::ranges::count(line, '"') % 2 != 0) line = Join(line);
    if (line.ends_with('\r')) line.remove_suffix(1);
    Split(line, record);
    return true;
}

/// The record with the lines that follow, up to the end of its quotes.
std::string_view RecordReader::Join(std::string_view first) {
    joined_ = first;
    std::string_view line;
    do {
        if (!lines_.Next(line) || joined_.size() > kLongestRecord) {
            Break(1, "quotes that do not end");
        }
        joined_.append("\n").append(line);
    } while (std::ranges::count(line, '"') % 2 == 0);
    return joined_;
}

void RecordReader::Split(std::string_view line, Record& record) const {
    record.fields.clear();
    record.columns.clear();
    std::size_t at = 0;
    do {
        record.columns.push_back(at + 1);
        record.fields.emplace_back();
        at = line.substr(at).starts_with('"') ? TakeQuoted(line, at + 1, record.fields.back())
                                              : TakePlain(line, at, record.fields.back());
    } while (at++ < line.size());
}

std::size_t RecordReader::TakePlain(std::string_view line, std::size_t at,
                                    std::string& field) const {
    const std::size_t end = std::min(line.find(',', at), line.size());
    field = line.substr(at, end - at);
    if (const std::size_t quote = field.find('"'); quote != field.npos) {
        Break(at + quote + 1, "a quote within a field that has none around it");
    }
    return end;
}

std::size_t RecordReader::TakeQuoted(std::string_view line, std::size_t at,
                                     std::string& field) const {
    for (; at < line.size(); ++at) {
        if (line[at] != '"') {
            field += line[at];
        } else if (line.substr(at + 1).starts_with('"')) {
            field += line[at++];
        } else {
            break;
        }
    }
    if (at + 1 < line.size() && line[at + 1] != ',') {
        Break(at + 2, "a field goes on behind its quotes");
    }
    return at + 1;
}

}  // namespace cwt
