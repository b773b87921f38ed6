// RateShipment with an engine that costs next to nothing.
#include <fmt/format.h>
#include <hundredweight/engine_interface.h>
#include <hundredweight/exports.h>

#include <cstdlib>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "data_sets.h"
#include "measures.h"
#include "session/session.h"
#include "shipments.h"

namespace hundredweight::bench {
namespace {

/// Leaves in the session's record the first generated shipment that can be rated.
void RateOne(cwt::Session& session) {
    for (const cwt::Shipment& shipment : GeneratedShipments(100)) {
        if (std::holds_alternative<cwt::Bill>(session.Rate(shipment, 0))) return;
    }
    throw std::runtime_error("no generated shipment can be rated");
}

/// Rates the record's shipment again and again; what stands in it stays as it is.
Work Rate(RateContext& context) {
    return Repeatedly([&] {
        if (RateShipment(&context, 0, 0) != 0) throw std::runtime_error("not rated");
        benchmark::DoNotOptimize(context.GrossChargeText);
    });
}

/// The numbers that stand in the record after a rating, printed as the record has them, from a
/// request and its answer that are copied.
class PlainWork {
 public:
    explicit PlainWork(const RateContext& context) {
        for (std::size_t i = 0; i < std::size(context.LineRateText); ++i) {
            AddAmount(context.LineRateText[i]);
            AddAmount(context.LineChargeText[i]);
        }
        AddAmount(context.MinChargeText);
        AddAmount(context.ExtraRateText);
        AddAmount(context.ExtraChargeText);
        AddAmount(context.GrossChargeText);
        AddAmount(context.SurchargeText);
        percents_.push_back(+context.DiscountFlatPercent);
        for (int i = 0; i < 9; ++i) percents_.push_back(+context.DiscountBreakPercent[i]);
        for (const auto* text : {context.TotalWeightText, context.BilledWeightText,
                                 context.ExtraWeightText, context.RateCode}) {
            integers_.push_back(std::atoi(text));
        }
        for (int list = 0; list < 2; ++list) {
            const BreakList& breaks = context.BreakLists[list];
            for (int i = 0; i < breaks.Count; ++i) integers_.push_back(+breaks.Weights[i]);
        }
        for (int i = 0; i < context.WeightBreakCount; ++i) {
            integers_.push_back(+context.WeightBreakMin[i]);
        }
    }

    void operator()() {
        record_ = answer_;
        char* text = text_;
        for (const double amount : amounts_) text = fmt::format_to(text, "{:9.2f}", amount);
        for (const float percent : percents_)
            text = fmt::format_to(text, "{:05.0f}", percent * 100);
        for (const int32_t integer : integers_) text = fmt::format_to(text, "{:5d}", integer);
        answer_ = record_;
        benchmark::DoNotOptimize(answer_);
        benchmark::DoNotOptimize(text_);
    }

    std::size_t numbers() const { return amounts_.size() + percents_.size() + integers_.size(); }

 private:
    void AddAmount(const char* text) { amounts_.push_back(std::atof(text)); }

    std::vector<double> amounts_;
    std::vector<float> percents_;
    std::vector<int32_t> integers_;
    char text_[2000];
    EngineRateRecord record_{}, answer_{};
};

}  // namespace

void MeasureRating(Table& table, const Extent& /*extent*/) {
    cwt::Session session({.data = SampleSet(), .engine = HWT_INSTANT_ENGINE});
    RateOne(session);
    const auto with_minimums = std::make_unique<RateContext>(session.context());
    const auto without = std::make_unique<RateContext>(session.context());
    without->ZmcCount = 0;
    if (with_minimums->ZmcCount == 0) throw std::runtime_error("the sample set has no minimums");
    PlainWork plain_work(*without);
    const Work plain = Repeatedly([&] { plain_work(); });
    const std::string against =
        fmt::format("{{fmt}}'s texts of its {} numbers, and the engine's record copied in and out",
                    plain_work.numbers());
    table.Measure(
        {.what = "RateShipment, an engine that answers at once", .against = against, .goal = 0.6},
        Rate(*without), plain);
    table.Measure(
        {.what = "RateShipment, with the sample set's ZMC file", .against = against, .goal = 0.8},
        Rate(*with_minimums), plain);
}

}  // namespace hundredweight::bench
