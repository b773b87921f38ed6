// A rated shipment, with all that an explanation of its bill looks at.
#pragma once

#include <hundredweight/rate_context.h>

#include <optional>
#include <string>
#include <vector>

#include "bill/bill.h"
#include "bill/explanation.h"
#include "session/data_files.h"
#include "session/engine_answers.h"
#include "session/minimum_charge.h"
#include "shipment/shipment.h"

namespace cwt {

/// How the state of a point was settled before the engine was asked.
struct SettledState {
    std::string state;
    std::string words;  ///< Behind "30303 lies in GA": ", as entered".
    Source source;
};

struct RatedShipment {
    const Shipment& shipment;
    const RateContext& context;  ///< As the rating has left it.
    const Bill& bill;
    DataFiles& files;
    SettledState origin;
    SettledState destination;
    EngineTables engine;
    std::optional<MinimumChargeMatch> lane;  ///< What the minimum-charge file says.

    Source Defaults(const std::string& field) const { return files.Record("DEF", 1, field); }
    Source Settings(const std::string& field) const { return files.Record("SET", 1, field); }
    /// Of the shipment's profile.
    Source Profile(const std::string& field) const {
        return files.Profile(context.ProfileIndex + 1, field);
    }
};

/// Looks up again, in a copy of the record that look-ups may write, what the rating has
/// overwritten.
RatedShipment LookAt(const Shipment& shipment, const RateContext& context, const Bill& bill,
                     DataFiles& files, RateContext& copy);

}  // namespace cwt
