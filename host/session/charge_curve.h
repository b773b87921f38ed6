// What a shipment would cost at other weights: the net charge over the weight, its lines keeping
// their shares.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "bill/money.h"
#include "session/engine_answers.h"
#include "session/session.h"

namespace cwt {

inline constexpr int kHighestCurveWeight = 999'999;

struct WeightRange {
    int from = 1, to = 20'000;  ///< Pounds, both included.
};

/// The rating of one weight.
struct CurvePoint {
    int weight = 0;
    int billed_weight = 0;
    Cents gross = 0, net = 0, due = 0;
    bool is_minimum = false;   ///< The minimum charge holds.
    int deficit = 0;           ///< Pounds that were added to reach a cheaper weight break.
    std::string refusal = {};  ///< Why there are no charges; empty when there are.
};

/// Weights that are all billed as one higher one.
struct Plateau {
    int from = 0, to = 0;
    int billed_weight = 0;
    Cents net = 0;  ///< At the last of them; lines of several classes cost a little less before.
};

struct ChargeCurve {
    std::string id;  ///< The shipment's.
    WeightRange range;
    /// Whether between two neighbours no point is off the straight line by more than whole cents
    /// and whole pounds make it. It is not when there were too many kinks to rate them all.
    bool is_complete = true;
    std::vector<CurvePoint> points;   ///< Ascending.
    std::vector<WeightBreak> breaks;  ///< Of the tariff, within the range.
    std::vector<Plateau> plateaus;
    std::optional<CurvePoint> minimum;  ///< The last point up to which the minimum charge holds.
    CurvePoint shipment;                ///< As it is.
    std::optional<CurvePoint>
        cheaper;  ///< The next heavier point that costs less, and not by rounding.
};

using CurveOutcome = std::variant<ChargeCurve, Refusals>;

/// Refused when the shipment is as it stands.
CurveOutcome DrawCurve(Session& session, const Shipment& shipment, const WeightRange& range);

/// The curve as it is printed, of the schema hundredweight/curve/1.
std::string CurveDocument(const ChargeCurve& curve);

}  // namespace cwt
