#include "tariff/written_file.h"

#include "platform/file.h"
#include "tariff/record_fields.h"

namespace hundredweight {

int32_t WriteFile(RateContext& context, const std::string& path, std::string_view content,
                  const WriteCodes& codes) {
    using platform::ReplaceOutcome;
    const ReplaceOutcome outcome =
        path.empty() ? ReplaceOutcome::kNotCreated
                     : platform::ReplaceFile(path.c_str(), content.data(), content.size());
    switch (outcome) {
        case ReplaceOutcome::kReplaced:
            return 1;
        case ReplaceOutcome::kNotCreated:
            return Fail(context, codes.cannot_create);
        case ReplaceOutcome::kNotWritten:
            break;
    }
    return Fail(context, codes.cannot_write);
}

}  // namespace hundredweight
