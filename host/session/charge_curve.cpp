#include "session/charge_curve.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <set>

#include "session/curve_rater.h"

namespace cwt {
namespace {

constexpr std::size_t kMostRatings = 2'000;

struct Section {
    int from, to;
};

/// Whether the curve goes straight from one sample to the other, as far as one between them tells.
bool IsStraight(const CurveSample& a, const CurveSample& between, const CurveSample& b) {
    if (a.regime != b.regime || a.regime != between.regime) return false;
    const double part = static_cast<double>(between.point.weight - a.point.weight) /
                        static_cast<double>(b.point.weight - a.point.weight);
    const auto is_near = [&](double first, double value, double last) {
        return std::abs(first + (last - first) * part - value) <= between.tolerance;
    };
    return is_near(a.net, between.net, b.net) && is_near(a.due, between.due, b.due);
}

/// Rates a section in three places, and says whether it is straight there.
bool IsStraight(CurveRater& rater, const Section& section) {
    const int quarter = (section.to - section.from) / 4;
    const int middle = section.from + (section.to - section.from) / 2;
    for (const int weight : {middle, section.from + quarter, section.to - quarter}) {
        if (weight == section.from || weight == section.to) continue;
        if (!IsStraight(rater.At(section.from), rater.At(weight), rater.At(section.to))) {
            return false;
        }
    }
    return true;
}

/// Both sides of every break, the ends and the shipment.
std::vector<int> KnownKinks(const WeightRange& range, const std::vector<WeightBreak>& breaks,
                            int own_weight) {
    std::set<int> weights = {range.from, range.to};
    const auto add = [&](int weight) {
        if (weight > range.from && weight < range.to) weights.insert(weight);
    };
    for (const WeightBreak& weight_break : breaks) {
        add(weight_break.weight - 1);
        add(weight_break.weight);
    }
    add(own_weight);
    return {weights.begin(), weights.end()};
}

/// Halves sections until all are straight. False when that takes too many ratings.
bool Refine(CurveRater& rater, const std::vector<int>& weights) {
    std::deque<Section> sections;
    for (std::size_t i = 0; i + 1 < weights.size(); ++i) {
        sections.push_back({weights[i], weights[i + 1]});
    }
    for (const int weight : weights) rater.At(weight);
    while (!sections.empty()) {
        const Section section = sections.front();
        sections.pop_front();
        if (section.to - section.from < 2) continue;
        if (rater.samples().size() + 3 > kMostRatings) return false;
        if (IsStraight(rater, section)) continue;
        const int middle = section.from + (section.to - section.from) / 2;
        sections.push_back({section.from, middle});
        sections.push_back({middle, section.to});
    }
    return true;
}

std::vector<Plateau> FindPlateaus(const std::vector<CurvePoint>& points) {
    std::vector<Plateau> plateaus;
    bool is_on = false;
    for (const CurvePoint& point : points) {
        const bool is_raised = point.deficit > 0;
        if (is_raised && is_on && plateaus.back().billed_weight == point.billed_weight) {
            plateaus.back().to = point.weight;
            plateaus.back().net = point.net;
        } else if (is_raised) {
            plateaus.push_back({point.weight, point.weight, point.billed_weight, point.net});
        }
        is_on = is_raised;
    }
    return plateaus;
}

std::optional<CurvePoint> FindMinimum(const std::vector<CurvePoint>& points) {
    std::optional<CurvePoint> last;
    for (const CurvePoint& point : points) {
        if (!point.refusal.empty()) continue;
        if (!point.is_minimum) break;
        last = point;
    }
    return last;
}

std::optional<CurvePoint> FindCheaper(const std::vector<CurvePoint>& points,
                                      const CurvePoint& shipment, Cents rounding) {
    const auto found = std::ranges::find_if(points, [&](const CurvePoint& point) {
        return point.weight > shipment.weight && point.refusal.empty() &&
               point.net + rounding < shipment.net;
    });
    return found == points.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

CurveOutcome DrawCurve(Session& session, const Shipment& shipment, const WeightRange& range) {
    CurveRater rater(session, shipment);
    Outcome outcome = rater.RateWhole();
    if (auto* refusals = std::get_if<Refusals>(&outcome)) return std::move(*refusals);
    ChargeCurve curve;
    curve.id = shipment.id;
    curve.range = range;
    curve.shipment = PointOf(std::get<Bill>(outcome));
    // The set's own breaks are where discounts and surcharges change.
    std::vector<WeightBreak> all = WeightBreaksOf(session.context());
    const auto copy = std::make_unique<RateContext>(session.context());
    const std::vector<WeightBreak> of_tariff = AskForTables(*copy).breaks;
    all.insert(all.end(), of_tariff.begin(), of_tariff.end());
    std::ranges::copy_if(of_tariff, std::back_inserter(curve.breaks), [&](const auto& entry) {
        return entry.weight >= range.from && entry.weight <= range.to;
    });
    curve.is_complete = Refine(rater, KnownKinks(range, all, curve.shipment.weight));
    for (const auto& [weight, sample] : rater.samples()) curve.points.push_back(sample.point);
    curve.plateaus = FindPlateaus(curve.points);
    curve.minimum = FindMinimum(curve.points);
    curve.cheaper = FindCheaper(curve.points, curve.shipment, RoundingOf(shipment.lines.size()));
    return curve;
}

}  // namespace cwt
