#include "reference/engine/rating.h"

#include <algorithm>
#include <span>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

constexpr std::int32_t kHighestTotalWeight = 999'999;  // Pounds: six digits.

/// A line in use and the rates of its class.
struct RatableLine {
    std::size_t number = 0;
    std::int32_t weight = 0;
    std::span<const std::int32_t> rates;
};

struct RatableLines {
    std::array<RatableLine, kLineCount> lines;
    std::size_t count = 0;
    std::int32_t factor = 0;  ///< Times 10000, of all rates.

    std::span<const RatableLine> InUse() const { return std::span(lines).first(count); }
    Cents RateOf(const RatableLine& line, std::size_t weight_break) const {
        return Portion(line.rates[weight_break], factor, 10'000);
    }
    std::int32_t TotalWeight() const;
};

std::int32_t RatableLines::TotalWeight() const {
    std::int32_t total = 0;
    for (const RatableLine& line : InUse()) total += line.weight;
    return total;
}

Status CheckTariff(const Tariff* tariff, const RateRequest& request) {
    if (!tariff) return Status::kUnknownTariff;
    const auto date = DateValue(request.date);
    return date && tariff->effective_date <= *date ? Status::kNone : Status::kTariffNotInEffect;
}

Status CheckPoints(const RateBase& base, const Lane* lane, const RateRequest& request) {
    if (base.states.Find(request.origin.prefix).empty()) return Status::kUnknownOrigin;
    if (base.states.Find(request.destination.prefix).empty()) return Status::kUnknownDestination;
    return lane ? Status::kNone : Status::kNoLane;
}

Status ReadLines(const Tariff& tariff, const Lane& lane, const RateRequest& request,
                 RatableLines& ratable) {
    if (!request.factor) return Status::kFactorNotValid;
    ratable.factor = *request.factor;
    for (std::size_t i = 0; i < kLineCount; ++i) {
        const RequestLine& line = request.lines[i];
        if (!line.weight) return Status::kWeightNotValid;
        if (*line.weight == 0) continue;
        const auto class_index = tariff.ClassIndex(line.class_code);
        if (class_index == Tariff::npos) return Status::kUnknownClass;
        ratable.lines[ratable.count++] = {i, *line.weight, tariff.RatesOf(lane.scale, class_index)};
    }
    return ratable.count == 0 ? Status::kWeightNotValid : Status::kNone;
}

/// Rates the lines at a break that the total weight may fall short of: the deficit is billed at the
/// lowest class rate.
BreakRating RateAtBreak(const RatableLines& lines, const Tariff& tariff, std::size_t weight_break) {
    BreakRating rating;
    const std::int32_t total = lines.TotalWeight();
    rating.weight_break = weight_break;
    rating.billed_weight = std::max(total, tariff.breaks[weight_break]);
    rating.deficit_weight = rating.billed_weight - total;
    Cents lowest_rate = lines.RateOf(lines.lines.front(), weight_break);
    for (const RatableLine& line : lines.InUse()) {
        const Cents rate = lines.RateOf(line, weight_break);
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
    const std::size_t own_break = tariff.BreakIndex(lines.TotalWeight());
    const BreakRating actual = RateAtBreak(lines, tariff, own_break);
    if (own_break + 1 == tariff.breaks.size()) return actual;
    const BreakRating deficit = RateAtBreak(lines, tariff, own_break + 1);
    return deficit.gross < actual.gross ? deficit : actual;
}

Cents NetCharge(Cents gross, Cents discount, const Lane& lane) {
    return std::max(gross - discount, Cents{lane.minimum} + lane.arbitrary);
}

void RateBreakEntries(const RatableLines& lines, const Tariff& tariff,
                      const DiscountList& discounts, Rating& rating) {
    rating.break_entry_count = std::min(tariff.breaks.size(), rating.break_entries.size());
    for (std::size_t i = 0; i < rating.break_entry_count; ++i) {
        BreakEntry& entry = rating.break_entries[i];
        entry.weight = tariff.breaks[i];
        entry.rate = lines.RateOf(lines.lines.front(), i);
        entry.gross = ChargeOf(entry.weight, entry.rate);
        entry.net =
            NetCharge(entry.gross, DiscountOf(entry.gross, discounts.PercentAt(i)), *rating.lane);
        entry.in_use = !discounts.IsCut() || i < discounts.count;
    }
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

    rating.lane = tariff.lanes.Find(request.origin.prefix, request.destination.prefix);
    status = CheckPoints(base, rating.lane, request);
    if (status != Status::kNone) return Refused(status, &tariff);
    const Lane& lane = *rating.lane;

    RatableLines lines;
    status = ReadLines(tariff, lane, request, lines);
    if (status != Status::kNone) return Refused(status, &tariff);
    rating.total_weight = lines.TotalWeight();
    rating.charges = CheapestRating(lines, tariff);
    if (rating.charges.billed_weight > kHighestTotalWeight) {
        return Refused(Status::kWeightNotValid, &tariff);
    }

    rating.discount_percent = request.discounts.PercentAt(rating.charges.weight_break);
    rating.discount = DiscountOf(rating.charges.gross, rating.discount_percent);
    rating.net = NetCharge(rating.charges.gross, rating.discount, lane);
    RateBreakEntries(lines, tariff, request.discounts, rating);
    if (!FitsColumns(rating)) return Refused(Status::kAmountTooLarge, &tariff);
    rating.points = {Place(base, request.origin), Place(base, request.destination)};
    rating.status = CheckCities(request, rating.points);
    return rating;
}

}  // namespace hundredweight::reference
