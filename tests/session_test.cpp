// What a session answers to a shipment, and what it keeps of one for the next: nothing.
#include "session/session.h"

#include <fmt/format.h>

#include "support/explained_samples.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

class SessionTest : public ExplainedSamples {
 protected:
    Sources Here() const { return {.data = directory_}; }

    /// Places and codes of the refusals, "rated", or "broken" when the session is at its end.
    static std::string Told(Session& session, const Shipment& shipment) {
        try {
            const Outcome outcome = session.Rate(shipment, 0);
            const auto* const refusals = std::get_if<Refusals>(&outcome);
            if (refusals == nullptr) return "rated";
            std::string told;
            for (const Refusal& refusal : *refusals) {
                told +=
                    fmt::format("{}{} {}", told.empty() ? "" : ", ", refusal.place, refusal.code);
            }
            return told;
        } catch (const Broken&) {
            return "broken";
        }
    }

    static std::string Document(Session& session, const Shipment& shipment) {
        const Outcome outcome = session.Rate(shipment, 0);
        const auto* const bill = std::get_if<Bill>(&outcome);
        return bill == nullptr ? ReasonOf(std::get<Refusals>(outcome)) : BillDocument(*bill);
    }
};

TEST_F(SessionTest, AllThatIsWrongComesAtOnceAtItsPlace) {
    Session session(Here());
    const std::pair<const char*, const char*> cases[] = {
        {"{}", "rated"},
        {R"({"factor": 10, "lines": [{"class": "71", "weight": 9}, {"class": "72", "weight": 9}]})",
         "factor 513, lines[0].class 105, lines[1].class 105"},
        {R"({"origin": {"zip": "3030"}, "destination": {"zip": "6060A"}})",
         "origin.zip 101, destination.zip 102"},
        // Lines are checked against a tariff that is named, or else that of the points.
        {R"({"origin": {"zip": "3030"}, "lines": [{"class": "71", "weight": 9}]})",
         "origin.zip 101, lines[0].class 105"},
        {R"({"tariff": null, "origin": {"zip": "3030"}, "lines": [{"class": "71", "weight": 9}]})",
         "origin.zip 101"},
        {R"({"tariff": null})", "rated"},
        {R"({"tariff": null, "origin": {"zip": "00601"}})", "origin.zip 265"},
        {R"({"origin": {"zip": "M5H2N2", "city": "Toronto", "state": "ON"},
             "destination": {"zip": "M5H2N2", "city": "Toronto", "state": "ON"}})",
         "origin and destination 266"},
        {R"({"origin": {"territory": "X"}, "destination": {"territory": "X"}})",
         "origin and destination 103"},
        {R"({"origin": {"territory": "T"}})", "origin and destination 103"},
        {R"({"destination": {"territory": "F"}})", "origin and destination 103"},
        // The engine has no lane within the state, in words of its own.
        {R"({"origin": {"zip": "30303"}, "destination": {"zip": "30339", "city": "Atlanta",
             "state": "GA"}})",
         " -1"},
        {R"({"origin": {"zip": "30303", "intrastate": false}, "destination": {"zip": "30339",
             "city": "Atlanta", "state": "GA"}})",
         "origin and destination 103"},
        // What does not fit the record is told before anything is looked up.
        {R"({"origin": {"city": "A city whose name is far too long"}, "factor": 10})",
         "origin.city 0"},
        {R"({"profile": "Northest", "origin": {"territory": "Q"}, "factor": 10})",
         "profile 127, origin.territory 0"},
    };
    const std::string sound = Document(session, Sample("01-deficit-and-discount"));
    for (const auto& [changes, told] : cases) {
        EXPECT_EQ(Told(session, Sample("01-deficit-and-discount", changes)), told) << changes;
        EXPECT_EQ(Document(session, Sample("01-deficit-and-discount")), sound)
            << "after " << changes;
    }
}

TEST_F(SessionTest, AShipmentIsRatedAlikeWhateverCameBeforeIt) {
    std::vector<Shipment> shipments;
    for (const char* name :
         {"16-whole-road", "02-minimum-charge", "04-flat-discount", "05-discount-floor",
          "06-rate-factor", "07-surcharge-high", "09-all-kinds", "10-many-breaks",
          "13-destination-city-unknown", "11-canada"}) {
        shipments.push_back(Sample(name));
    }
    std::vector<std::string> alone;
    {
        Session session(Here());
        for (const Shipment& shipment : shipments) alone.push_back(Document(session, shipment));
    }
    Session session(Here());
    for (std::size_t i = shipments.size(); i-- > 0;) {
        for (const std::size_t before : {i, (i + 3) % shipments.size()}) {
            Document(session, shipments[before]);
            EXPECT_EQ(Document(session, shipments[i]), alone[i]) << i << " after " << before;
        }
    }
}

TEST_F(SessionTest, WhatProfilesNeedIsThereWhole) {
    const Shipment by_profile = Sample("02-minimum-charge", R"({"profile": "Northeast"})");
    const Shipment without = Sample("02-minimum-charge");
    Session session(Here());
    ASSERT_EQ(Told(session, by_profile), "rated");
    const std::string profiles = Content("PROFILE.FIL");
    for (const std::string& broken : {profiles.substr(0, profiles.size() - 10), std::string("x")}) {
        Write("PROFILE.FIL", broken);
        EXPECT_EQ(Told(session, by_profile), "broken");
        EXPECT_EQ(Told(session, without), "rated") << "it needs no profile";
    }
    fs::remove(directory_ / "PROFILE.FIL");
    EXPECT_EQ(Told(session, by_profile), "broken");
    Write("PROFILE.FIL", profiles);
    EXPECT_EQ(Told(session, by_profile), "rated");
    EXPECT_EQ(Told(session, Sample("02-minimum-charge", R"({"profile": "northeast"})")),
              "profile 127");
    EXPECT_EQ(Told(session, Sample("02-minimum-charge", R"({"profile": ""})")), "profile 127");
}

TEST_F(SessionTest, APostalCodeLiesInAStateOrIsRefused) {
    Session session(Here());
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"30303", "GA", ""},
        {"M5H2N2", "ON", ""},
        {"64000M", "MX", ""},
        {"00000", "", "lies"},
        {"3030", "", "this is no postal code"},
        {"", "", "this is no"},
        {"12345678", "", "this is no"},
        {"\u03b1", "", "this is no"}};
    for (const auto& [code, state, reason] : cases) {
        const StateAnswer answer = session.StateOf(code);
        EXPECT_EQ(answer.state, state) << code;
        EXPECT_EQ(answer.refusals.size(), *reason == '\0' ? 0U : 1U) << code;
        EXPECT_NE(ReasonOf(answer.refusals).find(reason), std::string::npos) << code;
    }
}

}  // namespace
}  // namespace cwt
