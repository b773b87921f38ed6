#include "session/rated_shipment.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <cstdlib>

#include "session/shipment_check.h"
#include "text/field_text.h"

namespace cwt {
namespace {

/// A record of the table of letter postal codes.
struct LetterRange {
    char State[2];
    char Low[3];
    char High[3];
};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// By the library's rule for the state of a postal code.
SettledState StateByPostalCode(const std::string& zip, const DataFiles& files, RateContext& copy) {
    SettledState settled;
    settled.state = FindState(copy, "", zip).state;
    if (copy.TariffSourceCode != 'N' && copy.ScTable[0][0] == 0) {
        settled.words = ", as the engine tells of the postal code";
        settled.source = {.field = "Tolvex_GetStateEx"};
    } else if (zip.size() == 6 && zip.back() == 'M') {
        settled.words = ", by the M behind its digits";
    } else if (IsDigit(zip[0])) {
        const std::string prefix = zip.substr(0, 3);
        settled.words = fmt::format(" by its prefix {} in the table of states", prefix);
        settled.source = files.Record("SC", std::atoi(prefix.c_str()));
    } else if (const int32_t entry = GetZipcIndex(&copy, zip.c_str()); entry >= 0) {
        LetterRange range;
        std::memcpy(&range, copy.SccTable + static_cast<std::size_t>(entry) * sizeof range,
                    sizeof range);
        settled.words = fmt::format(" by the prefixes {} to {} in the table of letter codes",
                                    TextOf(range.Low), TextOf(range.High));
        settled.source = files.Record("SCC", entry + 1);
    }
    return settled;
}

SettledState SettleState(const char* name, const Point& point, const DataFiles& files,
                         RateContext& copy) {
    const std::string place = name;
    if (!point.state.empty()) {
        return {point.state, ", as entered", {.shipment = place + ".state"}};
    }
    SettledState settled = StateByPostalCode(point.zip, files, copy);
    const bool cited = !settled.source.file.empty() || !settled.source.field.empty();
    if (!cited) settled.source = {.shipment = place + ".zip"};
    return settled;
}

}  // namespace

RatedShipment LookAt(const Shipment& shipment, const RateContext& context, const Bill& bill,
                     DataFiles& files, RateContext& copy) {
    copy = context;
    return {.shipment = shipment,
            .context = context,
            .bill = bill,
            .files = files,
            .origin = SettleState("origin", shipment.origin, files, copy),
            .destination = SettleState("destination", shipment.destination, files, copy),
            .engine = AskForTables(copy),
            .lane = FindMinimumCharge(context, files)};
}

}  // namespace cwt
