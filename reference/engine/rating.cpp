#include "reference/engine/rating.h"

#include <algorithm>
#include <optional>

#include "reference/engine/alternatives.h"
#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

constexpr std::int32_t kHighestTotalWeight = 999'999;  // Pounds: six digits.

/// A line in use with the rates of its class, the request's factor applied.
struct RatableLine {
    std::size_t number = 0;
    std::int32_t weight = 0;
    BreakRates rates;
};
using RatableLines = std::vector<RatableLine>;

BreakRates Factored(BreakRates rates, std::int32_t factor) {
    for (Cents& rate : rates) rate = Portion(rate, factor, 10'000);
    return rates;
}

Status CheckTariff(const Tariff* tariff, const RateRequest& request) {
    if (!tariff) return Status::kUnknownTariff;
    const auto date = DateValue(request.date);
    return date && tariff->effective_date <= *date ? Status::kNone : Status::kTariffNotInEffect;
}

Status CheckPoints(const RateBase& base, const Lane* lane, const RateRequest& request) {
    if (base.StateOf(request.origin.postal_code).empty()) return Status::kUnknownOrigin;
    if (base.StateOf(request.destination.postal_code).empty()) return Status::kUnknownDestination;
    return lane ? Status::kNone : Status::kNoLane;
}

Status ReadLines(const Tariff& tariff, const Lane& lane, const RateRequest& request,
                 RatableLines& ratable) {
    if (!request.factor) return Status::kFactorNotValid;
    const auto& scale = tariff.scales.at(lane.scale);
    for (std::size_t i = 0; i < kLineCount; ++i) {
        const RequestLine& line = request.lines[i];
        if (!line.weight) return Status::kWeightNotValid;
        if (*line.weight == 0) continue;
        const auto class_index = tariff.ClassIndex(line.class_code);
        if (class_index == Tariff::npos) return Status::kUnknownClass;
        ratable.push_back({i, *line.weight, Factored(scale[class_index], *request.factor)});
    }
    return ratable.empty() ? Status::kWeightNotValid : Status::kNone;
}

std::int32_t TotalWeight(const RatableLines& lines) {
    std::int32_t total = 0;
    for (const RatableLine& line : lines) total += line.weight;
    return total;
}

/// Rates the lines at a break that the total weight may fall short of: the deficit is billed at the
/// lowest class rate.
BreakRating RateAtBreak(const RatableLines& lines, const Tariff& tariff, std::size_t weight_break) {
    BreakRating rating;
    const std::int32_t total = TotalWeight(lines);
    rating.weight_break = weight_break;
    rating.billed_weight = std::max(total, tariff.breaks[weight_break]);
    rating.deficit_weight = rating.billed_weight - total;
    Cents lowest_rate = lines.front().rates[weight_break];
    for (const RatableLine& line : lines) {
        const Cents rate = line.rates[weight_break];
        rating.lines[line.number] = {rate, ChargeOf(line.weight, rate)};
        rating.gross += rating.lines[line.number].charge;
        lowest_rate = std::min(lowest_rate, rate);
    }
    if (rating.deficit_weight > 0) {
        rating.deficit = {lowest_rate, ChargeOf(rating.deficit_weight, lowest_rate)};
        rating.gross += rating.deficit.charge;
    }
    return rating;
}

BreakRating CheapestRating(const RatableLines& lines, const Tariff& tariff) {
    const std::size_t own_break = tariff.BreakIndex(TotalWeight(lines));
    const BreakRating actual = RateAtBreak(lines, tariff, own_break);
    if (own_break + 1 == tariff.breaks.size()) return actual;
    const BreakRating deficit = RateAtBreak(lines, tariff, own_break + 1);
    return deficit.gross < actual.gross ? deficit : actual;
}

Cents NetCharge(Cents gross, Cents discount, const Lane& lane) {
    return std::max(gross - discount, lane.minimum + lane.arbitrary);
}

std::vector<BreakEntry> BreakEntries(const BreakRates& rates, const Tariff& tariff,
                                     const Lane& lane, const DiscountList& discounts) {
    std::vector<BreakEntry> entries;
    for (std::size_t i = 0; i < tariff.breaks.size(); ++i) {
        BreakEntry entry{.weight = tariff.breaks[i], .rate = rates[i]};
        entry.gross = ChargeOf(entry.weight, entry.rate);
        entry.net = NetCharge(entry.gross, DiscountOf(entry.gross, discounts.PercentAt(i)), lane);
        entry.in_use = !discounts.cut || i < discounts.breaks.size();
        entries.push_back(entry);
    }
    return entries;
}

bool FitsColumns(const Rating& rating) {
    const auto fits = [](const RatedLine& line) {
        return line.rate <= kHighestRate && line.charge <= kHighestCharge;
    };
    return std::ranges::all_of(rating.charges.lines, fits) && fits(rating.charges.deficit) &&
           rating.charges.gross <= kHighestCharge && rating.net <= kHighestCharge;
}

Rating Refused(Status status, const Tariff* tariff) {
    Rating rating;
    rating.status = status;
    rating.tariff = tariff;
    return rating;
}

}  // namespace

Rating RateShipment(const RateBase& base, const RateRequest& request) {
    Rating rating;
    rating.tariff = base.FindTariff(request.tariff_name);
    Status status = CheckTariff(rating.tariff, request);
    if (status != Status::kNone) return Refused(status, rating.tariff);
    const Tariff& tariff = *rating.tariff;

    rating.lane =
        base.FindLane(tariff.name, request.origin.postal_code, request.destination.postal_code);
    status = CheckPoints(base, rating.lane, request);
    if (status != Status::kNone) return Refused(status, &tariff);
    const Lane& lane = *rating.lane;

    RatableLines lines;
    status = ReadLines(tariff, lane, request, lines);
    if (status != Status::kNone) return Refused(status, &tariff);
    rating.total_weight = TotalWeight(lines);
    rating.charges = CheapestRating(lines, tariff);
    if (rating.charges.billed_weight > kHighestTotalWeight) {
        return Refused(Status::kWeightNotValid, &tariff);
    }

    rating.discount_percent = request.discounts.PercentAt(rating.charges.weight_break);
    rating.discount = DiscountOf(rating.charges.gross, rating.discount_percent);
    rating.net = NetCharge(rating.charges.gross, rating.discount, lane);
    rating.break_entries = BreakEntries(lines.front().rates, tariff, lane, request.discounts);
    if (!FitsColumns(rating)) return Refused(Status::kAmountTooLarge, &tariff);
    rating.status = CheckCities(base, request);
    return rating;
}

}  // namespace hundredweight::reference
