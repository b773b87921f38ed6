#include "session/data_files.h"

#include <fstream>
#include <iterator>

#include "text/path_text.h"

namespace cwt {

DataFiles::DataFiles(const Sources& sources, const std::filesystem::path& discounts_elsewhere)
    : listing_(sources.data), set_(sources.set), discounts_elsewhere_(discounts_elsewhere) {}

Source DataFiles::Record(const std::string& extension, int record, const std::string& field) const {
    const bool elsewhere = extension == "DIS" && !discounts_elsewhere_.empty();
    const std::filesystem::path path = elsewhere ? discounts_elsewhere_ : Path(extension);
    if (path.empty()) return {.field = field};
    return {.file = PathText(elsewhere ? path : path.filename()), .record = record, .field = field};
}

Source DataFiles::Profile(int record, const std::string& field) const {
    return {.file = PathText(listing_.Find("PROFILE.FIL").filename()),
            .record = record,
            .field = field};
}

std::filesystem::path DataFiles::Path(const std::string& extension) const {
    return listing_.Find(set_ + "." + extension);
}

const std::string& DataFiles::Table(const std::string& extension) {
    const auto [entry, is_new] = tables_.try_emplace(extension);
    const std::filesystem::path path = is_new ? Path(extension) : std::filesystem::path();
    if (!path.empty()) {
        std::ifstream stream(path, std::ios::binary);
        entry->second.assign(std::istreambuf_iterator<char>(stream), {});
    }
    return entry->second;
}

}  // namespace cwt
