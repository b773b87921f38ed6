// What a shipment becomes in the record, at the ends of what each field holds.
#include "session/shipment_entry.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "session/messages.h"
#include "session/notes.h"
#include "text/field_text.h"

namespace cwt {
namespace {

Shipment SomeShipment() {
    Shipment shipment;
    shipment.origin.zip = "30303";
    shipment.destination.zip = "60601";
    shipment.lines = {{"70", 500}};
    return shipment;
}

/// Places and codes: "discount.percent 118".
std::string Told(const Refusals& refusals) {
    std::string told;
    for (const Refusal& refusal : refusals) {
        told += fmt::format("{}{} {}", told.empty() ? "" : ", ", refusal.place, refusal.code);
    }
    return told;
}

class ShipmentEntryTest : public ::testing::Test {
 protected:
    ShipmentEntryTest() { CollectMessageBoxes(); }

    std::string Enter(const std::function<void(Shipment&)>& change) {
        context_ = {};
        shipment_ = SomeShipment();
        change(shipment_);
        return Told(EnterShipment(shipment_, context_));
    }

    const std::unique_ptr<RateContext> record_ = std::make_unique<RateContext>();
    RateContext& context_ = *record_;
    Shipment shipment_;
};

TEST_F(ShipmentEntryTest, TextsFitTheirFieldsOrAreRefusedAtTheirPlaces) {
    struct Case {
        const char* place;
        std::string longest;
        std::function<std::string&(Shipment&)> text;
        std::function<std::string(const RateContext&)> entered;
        int code = 0;
    };
    const Case cases[] = {
        {"origin.zip", "64000M", [](Shipment& s) -> std::string& { return s.origin.zip; },
         [](const RateContext& c) { return TextOf(c.OrigZip); }, 101},
        {"destination.zip", "M5H2N2", [](Shipment& s) -> std::string& { return s.destination.zip; },
         [](const RateContext& c) { return TextOf(c.DestZip); }, 102},
        {"origin.city", std::string(30, 'o'),
         [](Shipment& s) -> std::string& { return s.origin.city; },
         [](const RateContext& c) { return TextOf(c.OrigCity); }},
        {"destination.city", "Qu\u00e9bec" + std::string(24, 'd'),
         [](Shipment& s) -> std::string& { return s.destination.city; },
         [](const RateContext& c) { return TextOf(c.DestCity); }},
        {"origin.state", "GA", [](Shipment& s) -> std::string& { return s.origin.state; },
         [](const RateContext& c) { return TextOf(c.OrigState); }},
        {"destination.state", "IL", [](Shipment& s) -> std::string& { return s.destination.state; },
         [](const RateContext& c) { return TextOf(c.DestState); }},
        {"lines[0].class", "77.5",
         [](Shipment& s) -> std::string& { return s.lines[0].class_code; },
         [](const RateContext& c) { return TextOf(c.LineClass[0]); }, 105},
        {"tariff", "SMPLNATL", [](Shipment& s) -> std::string& { return s.tariff.emplace(); },
         [](const RateContext& c) { return TextOf(c.TariffName); }},
    };
    for (const Case& each : cases) {
        const auto enter = [&](const std::string& text) {
            return Enter([&](Shipment& shipment) { each.text(shipment) = text; });
        };
        const std::string refused = fmt::format("{} {}", each.place, each.code);
        EXPECT_EQ(enter(each.longest), "") << each.place;
        EXPECT_EQ(each.entered(context_), each.longest);
        EXPECT_EQ(enter(each.longest + "x"), refused) << "longer than the field";
        EXPECT_EQ(enter("\u03b1"), refused) << "a letter that the data cannot hold";
        EXPECT_EQ(enter("\t"), refused) << "a control character";
    }
}

TEST_F(ShipmentEntryTest, LinesAndPointsStandWhereTheyWereWritten) {
    EXPECT_EQ(Enter([](Shipment& shipment) {
                  shipment.origin.territory = "f", shipment.destination.territory = "T";
                  shipment.origin.intrastate = false;
                  shipment.lines.clear();
                  for (int i = 1; i <= 8; ++i) {
                      shipment.lines.push_back({fmt::format("{}", 50 + i), 124990 + i});
                  }
              }),
              "");
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(TextOf(context_.LineClass[i]), fmt::format("{}", 51 + i));
        EXPECT_EQ(TextOf(context_.LineWeight[i]), fmt::format("{}", 124991 + i));
    }
    EXPECT_EQ(char{context_.OrigTerritory}, 'F');
    EXPECT_EQ(char{context_.DestTerritory}, 'T');
    EXPECT_EQ(char{context_.OrigIntrastate}, 'N');
    EXPECT_EQ(Enter([](Shipment&) {}), "");
    EXPECT_EQ(char{context_.OrigTerritory}, 'B');
    EXPECT_EQ(char{context_.OrigIntrastate}, 'Y');
    EXPECT_EQ(int{context_.DiscountOn}, 0) << "nothing is switched on unasked";
    EXPECT_EQ(int{context_.SurchargeOn}, 0);
    for (const char* wrong : {"", "A", "BF", "?"}) {
        EXPECT_EQ(Enter([&](Shipment& shipment) {
                      shipment.origin.territory = shipment.destination.territory = wrong;
                  }),
                  "origin.territory 0, destination.territory 0")
            << wrong;
    }
}

TEST_F(ShipmentEntryTest, EnteredTermsGoBeforeAllOthersToTheirLastDigit) {
    const struct {
        Discount discount;
        const char *told, *percent = "", *flat = "", *floor = "";
    } discounts[] = {
        {{45.5, 0, 0}, "", "45.50", "0.00", "0.00"},
        {{99.99, 99.99, 999.99}, "", "99.99", "99.99", "999.99"},
        {{0.01, 33.33, 12.3}, "", "0.01", "33.33", "12.30"},
        {{100, 99.99, 999.99}, "discount.percent 118"},
        {{99.99, 100, 1000}, "discount.flat_percent 118, discount.floor 119"},
        {{-0.01, -0.01, -0.01},
         "discount.percent 118, discount.flat_percent 118, discount.floor 119"},
    };
    for (const auto& [discount, told, percent, flat, floor] : discounts) {
        const auto enter = [&](Shipment& shipment) { shipment.discount = discount; };
        EXPECT_EQ(Enter(enter), told);
        if (*told != '\0') continue;
        EXPECT_EQ(TextOf(context_.EntryDiscountPercent), percent);
        EXPECT_EQ(TextOf(context_.EntryFlatPercent), flat);
        EXPECT_EQ(TextOf(context_.EntryFloor), floor);
    }
    context_.DefModeZ = 1;
    shipment_.discount = Discount{10, 0, 0};
    EnterShipment(shipment_, context_);
    EXPECT_EQ(int{context_.DiscountOn}, 1);
    EXPECT_EQ(int{context_.Profile.DiscModeP}, 1);
    EXPECT_EQ(int{context_.DefModeZ}, 0) << "the profile's discounts of ZIPs would go before it";
    EXPECT_EQ(Enter([](Shipment& shipment) { shipment.surcharge = {{1.25, 999.9999, 19}}; }), "");
    EXPECT_EQ(int{context_.SurchargeOn}, 1);
    EXPECT_EQ(float{context_.DefFactorLow}, 1.25F);
    EXPECT_EQ(float{context_.DefFactorHigh}, 999.9999F);
    EXPECT_EQ(TextOf(context_.DefBreakIndex), "19");
}

TEST_F(ShipmentEntryTest, AFactorHoldsWhenTheRateRecordCanCarryItUncut) {
    const struct {
        double entered;  ///< 0: none.
        float of_defaults;
        float conversion;  ///< 0: off.
        const char* told;
        double steps = 0;
    } cases[] = {
        {0, 0, 0, "", 10000},
        {0.0001, 0, 0, "", 1},
        {9.9999, 0, 0, "", 99999},
        {1.25, 3, 0, "", 12500},
        {0, 9.9999F, 0, "", 99999},
        {10, 0, 0, "factor 513"},
        {0.00001, 0, 0, "factor 513"},
        {1.00001, 0, 0, "factor 513"},
        {-1, 0, 0, "factor 513"},
        {0, 10, 0, "defaults 513"},
        {0, -1, 0, "defaults 513"},
        {0, 1e-5F, 0, "defaults 513"},
        {2, 0, 1.25, "", 25000},
        {8, 0, 1.25, "factor 513"},
        {0.5, 0, 19.9F, "", 99500},
        {0, 0, 9.5, "", 95000},
        {0, 0, 18.5, "defaults 513"},
        {0.0003, 0, 0.5, "", 1.5},
        {0.0001, 0, 0.25, "factor 513"},
    };
    for (const auto& [entered, of_defaults, conversion, told, steps] : cases) {
        SCOPED_TRACE(fmt::format("{} {} {}", entered, of_defaults, conversion));
        Shipment shipment = SomeShipment();
        context_ = {};
        context_.RateFactor = of_defaults;
        context_.ConversionOn = conversion > 0 ? 1 : 0;
        context_.ConversionRate = conversion > 0 ? conversion : 7;
        if (entered != 0) shipment.factor = entered;
        EXPECT_EQ(Told(EnterShipment(shipment, context_)), "");
        EXPECT_EQ(Told(CheckFactor(shipment, context_)), told);
        if (*told != '\0') continue;
        EXPECT_NEAR(FactorSteps(context_), steps, 0.005);
        EXPECT_EQ(NotesOn(shipment, context_).size(), steps != std::round(steps) ? 1U : 0U)
            << "it is rounded";
    }
}

TEST_F(ShipmentEntryTest, ADiscountThatAnEngineTakesForTheEndOfTheListIsRefused) {
    const struct {
        std::size_t at;
        float percent;
        bool on;
        const char* told;
    } cases[] = {
        {0, 99.98F, true, ""},
        {8, 99.98F, true, ""},
        {0, 99.99F, true, "discount 118"},
        {8, 99.99F, true, "discount 118"},
        {8, 99.986F, true, "discount 118"},
        {4, 100, true, "discount 118"},
        {4, 99.99F, false, ""},
    };
    for (const auto& [at, percent, on, told] : cases) {
        context_ = {};
        context_.DiscountOn = on ? 1 : 0;
        context_.DiscountBreakPercent[at] = percent;
        EXPECT_EQ(Told(CheckDiscounts(SomeShipment(), context_)), told) << at << " " << percent;
    }
    Shipment shipment = SomeShipment();
    for (const auto& [percent, columns, told] :
         {std::tuple{10.0, 0, "discount.percent 0"}, {10.0, 1, ""}, {0.0, 0, ""}}) {
        context_ = {};
        context_.DiscountOn = 1;
        context_.DiscBreakCount = columns;
        shipment.discount = Discount{percent, 5, 5};
        EXPECT_EQ(Told(CheckDiscounts(shipment, context_)), told) << percent << " " << columns;
    }
}

TEST_F(ShipmentEntryTest, WhatIsTakenOtherwiseThanItWasWrittenIsNoted) {
    const auto notes = [&](const std::function<void(Shipment&)>& change) {
        Shipment shipment = SomeShipment();
        change(shipment);
        std::string begins;
        for (const std::string& note : NotesOn(shipment, context_)) {
            begins += note.substr(0, note.find(':')) + ";";
        }
        return begins;
    };
    EXPECT_EQ(notes([](Shipment& s) { s.origin.city = std::string(17, 'x'); }), "");
    EXPECT_EQ(notes([](Shipment& s) { s.origin.city = std::string(18, 'x'); }), "origin.city;");
    EXPECT_EQ(notes([](Shipment& s) { s.destination.city = std::string(30, 'x'); }),
              "destination.city;");
    EXPECT_EQ(notes([](Shipment& s) { s.discount = Discount{0, 0, 12}; }), "");
    EXPECT_EQ(notes([](Shipment& s) { s.discount = Discount{0, 0, 12.01}; }), "discount.floor;");
    context_.WeightBreakCount = 8;
    EXPECT_EQ(notes([](Shipment& s) { s.surcharge = {{1, 2, 7}}; }), "");
    EXPECT_EQ(notes([](Shipment& s) { s.surcharge = {{1, 2, 8}}; }), "surcharge;");
    const auto by_code = [&](bool on, char source, char selector, bool guide) {
        context_.DiscountOn = on ? 1 : 0;
        context_.DiscountSource = source;
        context_.DisGroupSelector = selector;
        return !notes([&](Shipment& s) { s.service_guide = guide; }).empty();
    };
    for (const char selector : {'2', '4', '5'}) EXPECT_TRUE(by_code(true, 'C', selector, false));
    for (const char selector : {'0', '1', '3', '6', ' '}) {
        EXPECT_FALSE(by_code(true, 'C', selector, false)) << selector;
    }
    EXPECT_FALSE(by_code(true, 'C', '2', true));
    EXPECT_FALSE(by_code(false, 'C', '2', false));
    EXPECT_FALSE(by_code(true, 'B', '2', false));
}

}  // namespace
}  // namespace cwt
