// Ratings of one shipment at other weights.
#pragma once

#include <map>
#include <string>

#include "session/charge_curve.h"

namespace cwt {

/// The shares of the lines in a weight, in whole pounds: those of the largest remainders get what
/// is left over. Lines that come to no pound have weight 0.
std::vector<int> ShareOut(const std::vector<ShipmentLine>& lines, int weight);

/// Cents that the rounding of each line and of the discount may make between two points.
constexpr Cents RoundingOf(std::size_t lines) {
    return 1 + static_cast<Cents>(lines);
}

/// A rated weight, with what tells whether the curve goes straight on to another.
struct CurveSample {
    CurvePoint point;
    std::string regime;       ///< What holds here: rates, discount, minimum, deficit.
    double net = 0, due = 0;  ///< In cents, as the exact shares would come to.
    double tolerance = 0;     ///< Cents that rounding may make.
};

class CurveRater {
 public:
    CurveRater(Session& session, const Shipment& shipment);

    /// The rating of the shipment as it is. Refusals when there are any.
    Outcome RateWhole() { return session_.Rate(shipment_, 0); }

    const CurveSample& At(int weight);

    /// All that were asked for so far.
    const std::map<int, CurveSample>& samples() const { return samples_; }

 private:
    CurveSample Rate(int weight);

    Session& session_;
    Shipment shipment_;
    std::map<int, CurveSample> samples_;
};

/// What a bill says of its weight.
CurvePoint PointOf(const Bill& bill);

}  // namespace cwt
