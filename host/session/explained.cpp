#include "session/explained.h"

namespace cwt {

Explanation Explain(const RatedShipment& rated) {
    constexpr void (*kSubjects[])(const RatedShipment&, Explanation&) = {
        ExplainPoints,   ExplainTariff,  ExplainFactor,    ExplainLines,
        ExplainDiscount, ExplainMinimum, ExplainSurcharge, ExplainBreakCharges};
    Explanation explanation;
    for (const auto explain : kSubjects) explain(rated, explanation);
    return explanation;
}

}  // namespace cwt
