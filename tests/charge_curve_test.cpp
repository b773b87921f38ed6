// The curve of a shipment's charge, held against ratings of every single weight.
#include "session/charge_curve.h"

#include <fmt/core.h>

#include <cmath>
#include <cstdlib>
#include <numeric>

#include "session/curve_rater.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

class ChargeCurveTest : public ExplainedSamples {
 protected:
    /// The ratings of all weights of a range, the lines sharing each.
    static std::vector<CurvePoint> RateAll(Session& session, const Shipment& shipment,
                                           const WeightRange& range) {
        std::vector<CurvePoint> points;
        for (int weight = range.from; weight <= range.to; ++weight) {
            const std::vector<int> shares = ShareOut(shipment.lines, weight);
            Shipment scaled = shipment;
            scaled.lines.clear();
            for (std::size_t i = 0; i < shares.size(); ++i) {
                if (shares[i] == 0) continue;
                scaled.lines.push_back({shipment.lines[i].class_code, shares[i]});
            }
            const Outcome outcome = session.Rate(scaled, 0);
            const auto* const bill = std::get_if<Bill>(&outcome);
            points.push_back(bill != nullptr ? PointOf(*bill) : CurvePoint{.weight = weight});
        }
        return points;
    }

    /// Gives a lane a discount that grows with the weight: 42.5 percent, and 60 from 2,000 pounds.
    void RaiseDiscounts() const {
        std::string profiles = Content("PROFILE.FIL");
        std::size_t at = 0;
        for (int column = 0; column < 9; ++column) {
            at = profiles.find("42.50", at);
            ASSERT_NE(at, profiles.npos);
            if (column >= 3) profiles.replace(at, 5, "60.00");
            at += 5;
        }
        Write("PROFILE.FIL", profiles);
    }
};

std::string Text(const CurvePoint& point) {
    return fmt::format("{}: {} {} {} {} {} {} {}", point.weight, point.billed_weight, point.gross,
                       point.net, point.due, point.is_minimum, point.deficit, point.refusal);
}

/// Expects the curve's points to be these ratings, and every other one on the line between them.
void ExpectOnCurve(const ChargeCurve& curve, const std::vector<CurvePoint>& rated, double cents) {
    ASSERT_EQ(curve.points.front().weight, curve.range.from);
    ASSERT_EQ(curve.points.back().weight, curve.range.to);
    auto next = curve.points.begin();
    for (const CurvePoint& point : rated) {
        if (point.weight == next->weight) {
            EXPECT_EQ(Text(*next), Text(point));
            ++next;
            continue;
        }
        const CurvePoint& a = *(next - 1);
        const double part = double(point.weight - a.weight) / double(next->weight - a.weight);
        const auto between = [&](Cents first, Cents last) {
            return double(first) + double(last - first) * part;
        };
        EXPECT_NEAR(between(a.net, next->net), double(point.net), cents) << point.weight;
        EXPECT_NEAR(between(a.due, next->due), double(point.due), cents) << point.weight;
    }
}

/// What the ratings of every weight say of plateaus, minimum and the next cheaper weight.
std::string Marks(const std::vector<CurvePoint>& rated, const CurvePoint& own, Cents rounding) {
    std::string text;
    int minimum = 0, cheaper = 0;
    for (std::size_t i = 0; i < rated.size(); ++i) {
        const CurvePoint& point = rated[i];
        const bool begins = point.deficit > 0 && (i == 0 || rated[i - 1].deficit == 0);
        const bool ends = point.deficit > 0 && (i + 1 == rated.size() || rated[i + 1].deficit == 0);
        if (begins) text += fmt::format("{}-", point.weight);
        if (ends) text += fmt::format("{} as {} ", point.weight, point.billed_weight);
        if (point.is_minimum && minimum == point.weight - 1) minimum = point.weight;
        const bool is_cheaper = point.weight > own.weight && point.net + rounding < own.net;
        if (is_cheaper && cheaper == 0) cheaper = point.weight;
    }
    return text + fmt::format("minimum to {}, cheaper at {}", minimum, cheaper);
}

std::string Marks(const ChargeCurve& curve) {
    std::string text;
    for (const Plateau& plateau : curve.plateaus) {
        text += fmt::format("{}-{} as {} ", plateau.from, plateau.to, plateau.billed_weight);
    }
    return text + fmt::format("minimum to {}, cheaper at {}",
                              curve.minimum ? curve.minimum->weight : 0,
                              curve.cheaper ? curve.cheaper->weight : 0);
}

TEST_F(ChargeCurveTest, EveryWeightCostsWhatTheCurveSays) {
    RaiseDiscounts();
    constexpr const char* kRising = R"({"profile": "Northeast", "origin": {"zip": "10001",
        "city": "New York", "state": "NY"}, "destination": {"zip": "30303", "city": "Atlanta",
        "state": "GA"}, "tariff": "SMPLNATL", "lines": [{"class": "70", "weight": 1600}]})";
    const struct {
        const char *name, *changes;
        double cents;  // More where lines of several classes share whole pounds.
        bool has_cheaper = false;
    } cases[] = {
        {"02-minimum-charge", "{}", 2},
        {"02-minimum-charge", kRising, 2, true},
        {"05-discount-floor", "{}", 2},
        {"08-surcharge-low", "{}", 2},
        {"10-many-breaks", "{}", 2},
        {"01-deficit-and-discount", "{}", 15},
        {"01-deficit-and-discount", R"({"lines": [{"class": "85", "weight": 317},
                                                  {"class": "85", "weight": 823}]})",
         3},
    };
    Session session({.data = directory_});
    for (const auto& [name, changes, cents, has_cheaper] : cases) {
        SCOPED_TRACE(fmt::format("{} {}", name, changes));
        const Shipment shipment = Sample(name, changes);
        const WeightRange range = {1, 2'600};
        const CurveOutcome outcome = DrawCurve(session, shipment, range);
        const auto* const curve = std::get_if<ChargeCurve>(&outcome);
        ASSERT_NE(curve, nullptr) << ReasonOf(std::get<Refusals>(outcome));
        EXPECT_TRUE(curve->is_complete);
        EXPECT_LE(curve->points.size(), 500U);
        const std::vector<CurvePoint> rated = RateAll(session, shipment, range);
        ExpectOnCurve(*curve, rated, cents);
        EXPECT_EQ(curve->cheaper.has_value(), has_cheaper);
        EXPECT_EQ(Marks(*curve), Marks(rated, curve->shipment, RoundingOf(shipment.lines.size())));
        std::string breaks;
        for (const WeightBreak& entry : curve->breaks) breaks += entry.label + ' ';
        EXPECT_EQ(breaks, "1#> 500#> 1000#> 2000#> ");
        const Bill bill = std::get<Bill>(session.Rate(shipment, 0));
        EXPECT_EQ(Text(curve->shipment), Text(PointOf(bill)));
    }
}

TEST_F(ChargeCurveTest, WeightsThatAreRefusedAreToldAndTheNumberOfRatingsIsBounded) {
    Session session({.data = directory_});
    // The engine rates no more than 999,999 pounds; sixty dollars a hundredweight outgrow its
    // columns before.
    Shipment heavy = Sample("02-minimum-charge", R"({"factor": 9.9999})");
    const WeightRange range = {900'000, kHighestCurveWeight};
    const auto curve = std::get<ChargeCurve>(DrawCurve(session, heavy, range));
    EXPECT_LE(curve.points.size(), 2'000U);
    EXPECT_FALSE(curve.points.back().refusal.empty()) << Text(curve.points.back());
    const auto json = nlohmann::json::parse(CurveDocument(curve));
    EXPECT_TRUE(json["points"].back()["net_charge"].is_null());
    EXPECT_EQ(json["points"].back()["refusal"], curve.points.back().refusal);
    heavy.lines[0].class_code = "71";
    const CurveOutcome refused = DrawCurve(session, heavy, range);
    EXPECT_EQ(std::get<Refusals>(refused).front().place, "lines[0].class");
}

TEST(ShareOut, SharesAddUpAndAreWithinAPoundOfTheExactOnes) {
    const std::vector<std::vector<int>> cases = {
        {1}, {1205, 695}, {999'999, 1}, {3, 3, 3}, {1, 2, 3, 5, 7, 11, 13, 999'999}};
    for (const std::vector<int>& weights : cases) {
        std::vector<ShipmentLine> lines;
        for (const int weight : weights) lines.push_back({"70", weight});
        const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
        for (const int weight : {1, 2, 99, 1'000, 19'999, 999'999}) {
            const std::vector<int> shares = ShareOut(lines, weight);
            EXPECT_EQ(std::accumulate(shares.begin(), shares.end(), 0), weight);
            for (std::size_t i = 0; i < shares.size(); ++i) {
                EXPECT_LT(std::abs(shares[i] - weight * (weights[i] / total)), 1) << weight;
            }
        }
        EXPECT_EQ(ShareOut(lines, static_cast<int>(total)), weights);
    }
}

}  // namespace
}  // namespace cwt
