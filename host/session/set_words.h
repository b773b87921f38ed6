// What the record of a run holds of a tariff set, in the words of its folder of text.
#pragma once

#include <hundredweight/rate_context.h>

#include <nlohmann/json_fwd.hpp>

namespace cwt {

/// The sections of settings.json that were read, each with its fields, their values and meanings.
/// Bytes of the host's own are left out where there are none.
nlohmann::ordered_json Sections(const RateContext& context);

/// The labels that hosts print, whichever file they are from.
nlohmann::ordered_json Labels(const RateContext& context);
nlohmann::ordered_json TableNames(const RateContext& context);
nlohmann::ordered_json WeightBreaks(const RateContext& context);
nlohmann::ordered_json Accessorials(const RateContext& context);

/// The ranges of 3-digit ZIP prefixes and of letter prefixes that share a state.
nlohmann::ordered_json States(const RateContext& context);

}  // namespace cwt
