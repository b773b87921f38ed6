// The form of a shipment's two postal codes.
#include <hundredweight/exports.h>

#include <algorithm>
#include <string_view>

#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/text.h"

using namespace hundredweight;

namespace {

constexpr int32_t kInvalidOrigin = 101;
constexpr int32_t kInvalidDestination = 102;

/// How many digits a ZIP must begin with. The sixth character is a marker, never required.
int32_t SignificantLength(const RateContext& context) {
    const int32_t length = ReadInteger(WholeField(context.ZipLength));
    return length == 6 ? 5 : length;
}

bool IsAcceptable(const RateContext& context, const char (&zip)[7]) {
    if (IsLetter(zip[0])) {
        return zip[2] != ' ' && zip[2] != '\0' && context.SkipZipTablesFlag != 'Y';
    }
    if (!IsDigit(zip[0])) return false;
    const std::string_view text = WholeField(zip);
    const auto digits = std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin();
    return digits >= SignificantLength(context);
}

int32_t Verify(RateContext& context, const char (&zip)[7], int32_t code) {
    return IsAcceptable(context, zip) ? 1 : Fail(context, code);
}

}  // namespace

int32_t HWT_CALL VerOrigZip(RateContext* context) {
    return Verify(*context, context->OrigZip, kInvalidOrigin);
}

int32_t HWT_CALL VerDestZip(RateContext* context) {
    return Verify(*context, context->DestZip, kInvalidDestination);
}
