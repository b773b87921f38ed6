#include "reference/text/text_rows.h"

#include <algorithm>
#include <fstream>
#include <string_view>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

Fields SplitAtBars(std::string_view line) {
    Fields fields;
    for (std::size_t start = 0; start <= line.size();) {
        const auto bar = std::min(line.find('|', start), line.size());
        fields.emplace_back(Trimmed(line.substr(start, bar - start)));
        start = bar + 1;
    }
    return fields;
}

}  // namespace

void ForEachRow(const std::string& directory, const char* name, std::size_t field_count,
                const std::function<void(const Fields&)>& read_row) {
    const bool separated =
        directory.empty() || directory.find_last_of("/\\") + 1 == directory.size();
    const std::string path = directory + (separated ? "" : "/") + name;
    std::ifstream file(path);
    Require(file.is_open(), path + ": cannot be opened");
    int line_number = 0;
    for (std::string line; std::getline(file, line);) {
        ++line_number;
        const auto text = Trimmed(std::string_view(line).substr(0, line.find('#')));
        if (text.empty()) continue;
        try {
            const Fields fields = SplitAtBars(text);
            Require(fields.size() == field_count, "wrong number of fields");
            read_row(fields);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(path + ":" + std::to_string(line_number) + ": " +
                                     error.what());
        }
    }
    Require(!file.bad(), path + ": cannot be read");
}

}  // namespace hundredweight::reference
