#include "tariff/written_file.h"

#include "platform/replace_file.h"
#include "tariff/record_fields.h"

namespace hundredweight {

int32_t WriteFile(RateContext& context, const PathText& path, std::string_view content,
                  const WriteCodes& codes) {
    using platform::WriteOutcome;
    if (path.empty()) return Fail(context, codes.cannot_create);
    const platform::DirectoryTurn turn(path.c_str());
    const WriteOutcome outcome =
        platform::ReplaceFile(turn, path.c_str(), content.data(), content.size());
    if (outcome == WriteOutcome::kWritten) return 1;
    return Fail(context,
                outcome == WriteOutcome::kNotCreated ? codes.cannot_create : codes.cannot_write);
}

}  // namespace hundredweight
