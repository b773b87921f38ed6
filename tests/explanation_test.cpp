// Whether every explanation says what its bill says, and cites what is there.
#include <cstring>

#include "bill/money.h"
#include "reference/samples/generated_shipments.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

class ExplanationTest : public ExplainedSamples {
 protected:
    void ExpectSourceHolds(const Shipment& shipment, const Bill& bill, const Statement& statement,
                           const Source& source) const;
};

template <class Number>
Number NumberAt(const std::string& bytes, std::size_t at) {
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

/// Expects sums to be false only where the library has rounded, and by no more than that.
void ExpectSums(const Bill& bill, const Statement& statement, int& rounded) {
    if (statement.adds_up != false) return;
    ++rounded;
    const std::string topic = statement.topic;
    EXPECT_NE(statement.words.find("own"), std::string::npos) << statement.words;
    if (topic == "gross") {
        EXPECT_FALSE(GrossNote(bill).empty());
    } else {
        EXPECT_EQ(topic, "surcharge") << statement.words;
        const Cents base = CentsOf(FigureOf(statement, "base"));
        const double percent = std::stod(FigureOf(statement, "percent"));
        EXPECT_NEAR(static_cast<double>(base) * percent / 100,
                    static_cast<double>(CentsOf(bill.surcharge)), 1);
    }
}

bool IsWithin(const std::string& zip, const std::string& low, const std::string& high) {
    const std::size_t length = std::min(zip.size(), low.size());
    return zip.compare(0, length, low, 0, length) >= 0 &&
           zip.compare(0, length, high, 0, length) <= 0;
}

void ExplanationTest::ExpectSourceHolds(const Shipment& shipment, const Bill& bill,
                                        const Statement& statement, const Source& source) const {
    EXPECT_NE(source.file + source.field + source.shipment, "") << statement.words;
    if (source.file.empty()) return;
    const BillPoint& point =
        statement.topic == std::string("origin") ? bill.origin : bill.destination;
    const auto record = [&](std::size_t size) { return Record(source.file, source.record, size); };
    const std::string extension = source.file.substr(source.file.size() - 3);
    if (source.file == "SAMPLE.SC") {
        EXPECT_EQ(record(4).substr(0, 2), point.state);
        EXPECT_EQ(source.record, std::stoi(point.zip.substr(0, 3)));
    } else if (extension == "SCC") {
        EXPECT_EQ(record(8).substr(0, 2), point.state);
        EXPECT_TRUE(IsWithin(point.zip.substr(0, 3), record(8).substr(2, 3), record(8).substr(5)));
    } else if (extension == "CBS") {
        const std::string low = record(18).substr(0, 6), high = record(18).substr(6, 6);
        EXPECT_TRUE(IsWithin(bill.origin.zip, low, high) ||
                    IsWithin(bill.destination.zip, low, high));
        EXPECT_NE(statement.words.find(record(18).substr(12)), std::string::npos);
    } else if (extension == "CMT") {
        EXPECT_EQ(record(20).substr(12), bill.tariff);
    } else if (extension == "LVL") {
        EXPECT_EQ(record(18).substr(8, 4), FigureOf(statement, "date").substr(0, 4));
    } else if (extension == "ZMC") {
        const std::string lane = record(41);
        const auto fits = [&](const std::string& first, const std::string& second) {
            return IsWithin(first, lane.substr(1, 5), lane.substr(6, 5)) &&
                   IsWithin(second, lane.substr(11, 5), lane.substr(16, 5));
        };
        EXPECT_TRUE(fits(bill.origin.zip, bill.destination.zip) ||
                    (lane[0] != 'F' && fits(bill.destination.zip, bill.origin.zip)));
        const auto floor = static_cast<Cents>(NumberAt<float>(lane, 37));
        if (FigureOf(statement, "lane_floor") != "none") {
            EXPECT_EQ(FigureOf(statement, "lane_floor"), AmountOf(floor));
        }
    } else if (extension == "FIL") {
        EXPECT_EQ(record(sizeof(ProfileRecord)).c_str(), shipment.profile.value_or("no profile"));
    } else if (extension == "WGT") {
        const bool low = statement.words.find("The low percentage") == 0;
        EXPECT_EQ(bill.billed_weight < std::stoi(record(21).substr(13)), low) << statement.words;
    } else {
        EXPECT_EQ(source.record, 1);
        EXPECT_NE(record(extension == "DEF" ? 348 : 283), "");
    }
}

TEST_F(ExplanationTest, EveryFigureIsTheBillsAndEverySourceHoldsWhatIsSaidOfIt) {
    constexpr int kGenerated = 3000;
    hundredweight::samples::WriteGeneratedShipments(directory_ / "generated", kGenerated);
    Session session({.data = directory_});
    std::map<std::string, int> files;
    int rated = 0, rounded = 0;
    for (const char* name : {"shipments", "generated"}) {
        for (const auto& file : fs::directory_iterator(directory_ / name)) {
            Shipment shipment;
            if (!ReadShipmentFile(file.path().string(), shipment).empty()) continue;
            const ExplainedOutcome outcome = session.Explain(shipment, 0);
            const Outcome alone = session.Rate(shipment, 0);
            const auto* explained = std::get_if<ExplainedBill>(&outcome);
            ASSERT_EQ(explained != nullptr, std::holds_alternative<Bill>(alone));
            if (explained == nullptr) continue;
            SCOPED_TRACE(file.path());
            ++rated;
            EXPECT_EQ(BillText(explained->bill), BillText(std::get<Bill>(alone)));
            ExpectFigures(explained->explanation, FiguresOfBill(explained->bill));
            for (const Statement& statement : explained->explanation) {
                ExpectSums(explained->bill, statement, rounded);
                EXPECT_FALSE(statement.sources.empty()) << statement.words;
                for (const Source& source : statement.sources) {
                    ExpectSourceHolds(shipment, explained->bill, statement, source);
                    if (!source.file.empty()) ++files[source.file];
                }
            }
            if (HasFailure()) return;
        }
    }
    EXPECT_GT(rated, 2000);
    EXPECT_LT(rounded, rated / 10);
    EXPECT_EQ(files.size(), 10U) << "SC, CBS, CMT, LVL, DEF, SET, WGT, ZMC, profiles and SCC";
}

}  // namespace
}  // namespace cwt
