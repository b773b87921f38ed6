#include "reference/text/text_rows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

/// The lines of a file, of any length.
class Lines {
 public:
    explicit Lines(const std::string& path)
        : file_(path), block_(kBlock, '\0'), rest_(std::string_view(block_).substr(0, 0)) {}

    bool IsOpen() const { return file_.is_open(); }
    /// The file ended for another reason than its end.
    bool IsBroken() const { return file_.bad(); }

    /// The next line, without its end; it holds until the one after it is asked for.
    std::optional<std::string_view> Next() {
        std::size_t end = rest_.find('\n');
        while (end == rest_.npos && ReadOn()) end = rest_.find('\n');
        if (rest_.empty()) return std::nullopt;
        const auto line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
        return line;
    }

 private:
    static constexpr std::size_t kBlock = std::size_t{1} << 16;

    /// Reads behind what is left of the block, which moves to its front; false at the end.
    bool ReadOn() {
        const std::size_t left = rest_.size();
        std::memmove(block_.data(), rest_.data(), left);
        if (left == block_.size()) block_.resize(2 * left);
        file_.read(block_.data() + left, static_cast<std::streamsize>(block_.size() - left));
        const auto count = static_cast<std::size_t>(file_.gcount());
        rest_ = {block_.data(), left + count};
        return count > 0;
    }

    std::ifstream file_;
    std::string block_;
    std::string_view rest_;  ///< What was read and not handed out.
};

constexpr std::size_t kMostFields = 16;

/// Fields of a line, as many as there is room for. Result: how many it has.
std::size_t SplitAtBars(std::string_view line, std::span<std::string_view> fields) {
    std::size_t count = 0;
    const char* const end = line.data() + line.size();
    for (const char* start = line.data();; ++count) {
        const char* const bar = std::find(start, end, '|');
        if (count < fields.size()) fields[count] = Trimmed({start, bar});
        if (bar == end) return count + 1;
        start = bar + 1;
    }
}

}  // namespace

void ForEachRow(const std::string& directory, const char* name, std::size_t field_count,
                const std::function<void(Fields)>& read_row) {
    const bool separated =
        directory.empty() || directory.find_last_of("/\\") + 1 == directory.size();
    const std::string path = directory + (separated ? "" : "/") + name;
    Lines lines(path);
    Require(lines.IsOpen(), path, ": cannot be opened");
    std::array<std::string_view, kMostFields> fields;
    int line_number = 0;
    while (const auto line = lines.Next()) {
        ++line_number;
        const auto text = Trimmed(line->substr(0, line->find('#')));
        if (text.empty()) continue;
        try {
            Require(SplitAtBars(text, fields) == field_count, "wrong number of fields");
            read_row(Fields(fields).first(field_count));
        } catch (const std::runtime_error& error) {
            Refuse(path, ":", std::to_string(line_number), ": ", error.what());
        }
    }
    Require(!lines.IsBroken(), path, ": cannot be read");
}

}  // namespace hundredweight::reference
