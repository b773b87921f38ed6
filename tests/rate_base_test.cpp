// The reference engine's rate base: which lane, point and state it finds, and what it says of
// files that it cannot read.
#include <random>

#include "reference/engine/entry_points.h"
#include "reference/samples/carrier_files.h"
#include "reference/samples/sample_data.h"
#include "support/table.h"

namespace hundredweight {

struct RateBaseTest : TariffTest {
    RateBaseTest() { samples::WriteEngineData(directory_); }
    ~RateBaseTest() override { Tolvex_EndTolvexEx(handle_); }

    /// What the engine says at a start on the files.
    std::string Start() {
        Tolvex_EndTolvexEx(handle_);
        testing::internal::CaptureStderr();
        handle_ = Tolvex_InitializeTolvexEx(directory_.string().c_str());
        return testing::internal::GetCapturedStderr();
    }

    /// Status, minimum charge and origin city of a hundredweight.
    std::string Rate(const std::string& origin, const std::string& destination,
                     const char* tariff = "SMPLFAK1") {
        EngineRateRecord record;
        memset(&record, ' ', sizeof record);
        for (auto& line : record.ClassLines) FillField(line.Weight, '0');
        CopyText(record.TariffName, tariff);
        CopyText(record.TariffDate, "01-06-2025");
        CopyText(record.OrigZip, origin);
        CopyText(record.DestZip, destination);
        CopyText(record.ClassLines[0].ClassCode, "70 ");
        CopyText(record.ClassLines[0].Weight, "000100");
        EngineResultBlock block{960, 7, 7, {}, {}};
        Tolvex_RateShipment2Ex(handle_, &record, &block);
        return std::string(record.Status, 4) + ' ' + std::string(record.MinChargeFirst, 7) + ' ' +
               std::string(record.OrigCity, 17);
    }

    void* handle_ = nullptr;
};

struct Range {
    std::string low, high;
    bool Contains(const std::string& postal_code) const {
        const std::string prefix = postal_code.substr(0, 3);
        return low <= prefix && prefix <= high;
    }
    std::string Text() const { return low == high ? low : low + '-' + high; }
};

TEST_F(RateBaseTest, TheFirstRowThatFitsHolds) {
    std::mt19937 random(20250106);
    const auto range = [&]() -> Range {
        if (random() % 9 == 0) return {"000", "ZZZ"};
        // Prefixes of digits, and of letters around them.
        const auto prefix = [&] { return std::to_string(300 + random() % 12); };
        std::string low = prefix(), high = random() % 3 ? prefix() : low;
        if (low > high) std::swap(low, high);
        if (random() % 4 == 0) high = "K1A";
        return {low, high};
    };
    for (int run = 0; run < 40; ++run) {
        SCOPED_TRACE(run);
        std::vector<std::pair<Range, Range>> lanes;
        std::string rows;
        const auto count = 1 + random() % (run % 2 ? 400u : 12u);
        for (std::size_t i = 0; i < count; ++i) {
            lanes.emplace_back(range(), range());
            if (random() % 5 == 0) lanes.back() = lanes[random() % lanes.size()];
            rows += "SMPLFAK1|" + lanes.back().first.Text() + '|' + lanes.back().second.Text() +
                    "|3010|" + std::to_string(1000 + i) + ".00|0.00\n";
        }
        WriteFile("tolvex-lanes.txt", rows);
        WriteFile("tolvex-states.txt", "000-ZZZ | GA\n");
        ASSERT_EQ(Start(), "");
        for (int i = 0; i < 200; ++i) {
            const auto zip = [&] {
                return random() % 6 ? std::to_string(29900 + random() % 1500) : "K1A0B1";
            };
            const std::string origin = zip(), destination = zip();
            const auto first = std::ranges::find_if(lanes, [&](const auto& lane) {
                return lane.first.Contains(origin) && lane.second.Contains(destination);
            });
            const std::string minimum =
                first == lanes.end()
                    ? "0113 0000.00"
                    : "     " + std::to_string(1000 + (first - lanes.begin())) + ".00";
            EXPECT_EQ(Rate(origin, destination).substr(0, 12), minimum) << origin << destination;
        }
    }
}

TEST_F(RateBaseTest, PointsAndStatesKeepTheOrderOfTheirFiles) {
    WriteFile("tolvex-points.txt",
              "30302|Decatur|GA|D\n30303|Last|GA|D\n30302|Atlanta|GA|D\n"
              "303030303|Too long|GA|D\n30303|Never|GA|D\n");
    WriteFile("tolvex-states.txt", "303-304|AL\n300-399|GA\n303|TN\n000-999|TX\n");
    ASSERT_EQ(Start(), "");
    EXPECT_EQ(Rate("30302", "75201"), "     0089.00 Decatur          ");
    EXPECT_EQ(Rate("30303", "75201"), "     0089.00 Last             ");
    EXPECT_EQ(Rate("30301", "75201"), "     0089.00                  ");
    for (const auto& [postal_code, state] :
         Table<2>("30399 AL  30500 GA  40000 TX  K1A0B1 ??  3030 ??")) {
        char found[2] = {'?', '?'};
        Tolvex_GetStateEx(handle_, found, postal_code.c_str());
        EXPECT_EQ(std::string(found, 2), state) << postal_code;
    }
}

TEST_F(RateBaseTest, FaultsAreToldWithFileLineAndReason) {
    // The first row that is wrong counts; comments, blank lines and long ones count as lines.
    const std::string comment(200000, '#');
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"tariffs", "SMPLNATL|01-06-2025|70|1", "1: the tariff is on file already"},
        {"tariffs", "SHORT|01-06-2025|70|1", "1: a tariff name has eight characters"},
        {"tariffs", "SMPLNEW1|13-06-2025|70|1", "1: '13-06-2025' is no date MM-DD-YYYY"},
        {"tariffs", "\n \r\nSMPLNEW1|01-06-2025|70|5", "3: a tariff has 1 to 20 weight breaks"},
        {"tariffs", "SMPLNEW1|01-06-2025|70|1 5 5", "1: weight breaks must ascend"},
        {"rates", "SMPLFAK1|3010|FAK|1.00 1.00 1.00 1.00 1.00 1.00", "1: the class has its rates"},
        {"rates", "SMPLFAK1|9|FAK|1.00 1.00", "1: one rate per weight break"},
        {"rates", "SMPLFAK1|9|FAK|1.00 1.0", "1: '1.0' is no amount"},
        {"rates", "SMPLNATL|9|72|1.00", "1: class '72' is not in the tariff"},
        {"lanes", "NONE|300|301|3010|1.00|1.00", "1: tariff 'NONE' is not on file"},
        {"lanes", "SMPLFAK1|300|301|9999|1.00|1.00", "1: scale '9999' has no rates"},
        {"lanes", "SMPLFAK1|301-300|301|3010|1.00|1.00", "1: '301-300' runs backwards"},
        {"lanes", "SMPLFAK1|300|30|3010|1.00|1.00", "1: '30' is no range of prefixes"},
        {"lanes", "SMPLFAK1|300|301|3010|1.00|10000.00", "1: '10000.00' is no amount"},
        {"lanes", comment + "\nSMPLFAK1|300|301|3010|1.00", "2: wrong number of fields"},
        {"lanes", comment + "\r\n#\n\tx # y", "3: wrong number of fields"},
        {"points", "30303|A city of 18 chars|GA|D", "1: a city has 1 to 17 characters"},
        {"points", "30303|Atlanta|GAx|D", "1: 'GAx' is no state"},
        {"states", "303|GA|", "1: wrong number of fields"}};
    for (const auto& [file, rows, reason] : cases) {
        samples::WriteEngineData(directory_);
        const auto path = directory_ / (std::string("tolvex-") + file + ".txt");
        std::string content = FileContent(path);
        const auto lines = std::ranges::count(content, '\n');
        WriteFile(path.filename().string(), content + rows);
        const int line = std::stoi(reason);
        const std::string told = "tolvex: " + directory_.string() + "/tolvex-" + file +
                                 ".txt:" + std::to_string(lines + line) + (reason + 1);
        EXPECT_EQ(Start().substr(0, told.size()), told);
    }
    std::filesystem::remove(directory_ / "tolvex-points.txt");
    samples::WriteEngineData(directory_);
    std::filesystem::remove(directory_ / "tolvex-points.txt");
    EXPECT_EQ(Start(), "tolvex: " + directory_.string() + "/tolvex-points.txt: cannot be opened\n");
}

TEST_F(RateBaseTest, ReadsACarriersLanes) {
    WriteFile("tolvex-rates.txt", samples::CarrierRates());
    const std::string lanes = samples::CarrierLanes();
    EXPECT_TRUE(
        lanes.substr(lanes.rfind('\n', lanes.size() - 2)).starts_with("\nSMPLNATL | M5H | K1A |"));
    // Those of the first origins; all rows are made alike.
    WriteFile("tolvex-lanes.txt", lanes.substr(0, lanes.find("SMPLNATL | 020 ")));
    ASSERT_EQ(Start(), "");
    for (const auto& [origin, destination, minimum] :
         Table<3>("01000 01100 _____0083.00  01100 01100 0113")) {
        const std::string found = Rate(origin, destination, "SMPLNATL");
        EXPECT_EQ(found.substr(0, minimum.size()), minimum);
    }
}

TEST(CarrierFiles, AscendWhereTheirFormatsWantIt) {
    for (const auto& [table, width, key, count] :
         {std::tuple(samples::CarrierPointCodes(), 18, 12, 100000),
          {samples::CarrierTariffNames(), 20, 12, 1000000}}) {
        ASSERT_EQ(table.size(), static_cast<std::size_t>(width) * count);
        const std::string_view records = table;
        std::size_t falls = 0;
        for (std::size_t at = width; at < records.size(); at += width)
            falls += records.substr(at, key) <= records.substr(at - width, key);
        EXPECT_EQ(falls, 0u);
    }
    EXPECT_EQ(samples::CarrierMinimumCharges().size(), 41u * 100000);
}

}  // namespace hundredweight
