#include "session/curve_rater.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace cwt {
namespace {

std::int64_t TotalOf(const std::vector<ShipmentLine>& lines) {
    std::int64_t total = 0;
    for (const ShipmentLine& line : lines) total += line.weight;
    return total;
}

/// What the bill's whole pounds cost more than the exact shares of its lines would, in cents.
double CostOfWholePounds(const Bill& bill, const std::vector<int>& original) {
    const double whole = std::accumulate(original.begin(), original.end(), 0.0);
    double cents = 0;
    for (std::size_t i = 0; i < bill.lines.size(); ++i) {
        const double share = bill.total_weight * (original[i] / whole);
        const auto rate = static_cast<double>(CentsOf(bill.lines[i].rate));
        cents += (bill.lines[i].weight - share) * rate / 100;
    }
    return cents;
}

/// What the charges depend on besides the weight; within one of them they are linear.
std::string RegimeOf(const Bill& bill, const CurvePoint& point) {
    std::string regime =
        fmt::format("{} {}", bill.discount_percent, point.is_minimum ? "minimum" : "");
    for (const BillLine& line : bill.lines) regime += ' ' + line.rate;
    if (point.deficit > 0) regime += fmt::format(" {} {}", bill.billed_weight, bill.deficit.rate);
    return regime;
}

double Ratio(Cents part, Cents whole) {
    return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
}

}  // namespace

std::vector<int> ShareOut(const std::vector<ShipmentLine>& lines, int weight) {
    const std::int64_t total = TotalOf(lines);
    std::vector<int> shares;
    shares.reserve(lines.size());
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (const ShipmentLine& line : lines) {
        shares.push_back(static_cast<int>(std::int64_t{weight} * line.weight / total));
    }
    std::ranges::stable_sort(order, std::ranges::greater{}, [&](std::size_t i) {
        return std::int64_t{weight} * lines[i].weight % total;
    });
    const int left_over = weight - std::accumulate(shares.begin(), shares.end(), 0);
    for (int i = 0; i < left_over; ++i) ++shares[order[static_cast<std::size_t>(i)]];
    return shares;
}

CurvePoint PointOf(const Bill& bill) {
    CurvePoint point;
    point.weight = bill.total_weight;
    point.billed_weight = bill.billed_weight;
    point.gross = CentsOf(bill.gross);
    point.net = CentsOf(bill.net);
    point.due = CentsOf(bill.total_due);
    point.deficit = bill.deficit.weight;
    const Cents minimum = CentsOf(bill.minimum);
    const Cents less = SumOfLines(bill) - CentsOf(bill.discount_amount);
    point.is_minimum = point.net == minimum && less < minimum;
    return point;
}

CurveRater::CurveRater(Session& session, const Shipment& shipment)
    : session_(session), shipment_(shipment) {
    // It tells of terminals, not of charges.
    shipment_.service_guide = false;
}

const CurveSample& CurveRater::At(int weight) {
    const auto found = samples_.find(weight);
    if (found != samples_.end()) return found->second;
    return samples_.emplace(weight, Rate(weight)).first->second;
}

CurveSample CurveRater::Rate(int weight) {
    const std::vector<int> shares = ShareOut(shipment_.lines, weight);
    Shipment scaled = shipment_;
    scaled.lines.clear();
    std::vector<int> original;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        if (shares[i] == 0) continue;
        scaled.lines.push_back({shipment_.lines[i].class_code, shares[i]});
        original.push_back(shipment_.lines[i].weight);
    }
    const Outcome outcome = session_.Rate(scaled, 0);
    CurveSample sample;
    if (const auto* refusals = std::get_if<Refusals>(&outcome)) {
        sample.point.weight = weight;
        sample.point.refusal = ReasonOf(*refusals);
        sample.regime = "refused";
        return sample;
    }
    const Bill& bill = std::get<Bill>(outcome);
    sample.point = PointOf(bill);
    const CurvePoint& point = sample.point;
    sample.regime = RegimeOf(bill, point);
    const double gross_error = CostOfWholePounds(bill, original);
    const double net_error = point.is_minimum ? 0 : gross_error * Ratio(point.net, point.gross);
    sample.net = static_cast<double>(point.net) - net_error;
    sample.due = static_cast<double>(point.due) - net_error * Ratio(point.due, point.net);
    // The library sums in single precision.
    constexpr double kSinglePrecision = 1.0 / (1 << 22);
    sample.tolerance = static_cast<double>(RoundingOf(bill.lines.size())) +
                       static_cast<double>(point.gross) * kSinglePrecision;
    return sample;
}

}  // namespace cwt
