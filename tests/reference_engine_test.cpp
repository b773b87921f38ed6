#include <random>

#include "reference/engine/entry_points.h"
#include "reference/samples/sample_data.h"
#include "support/table.h"

namespace hundredweight {

template <std::size_t... N>
std::string Columns(const char (&... columns)[N]) {
    return ((std::string(columns, N) + "|") + ...);
}

std::string Totals(const EngineRateRecord& r) {
    return Columns(r.Status, r.TotalWeight, r.BilledWeight, r.DiscountPercent, r.DiscountAmount,
                   r.NetCharge);
}

struct ReferenceEngine : TariffTest {
    ReferenceEngine() {
        samples::WriteEngineData(directory_);
        handle_ = Tolvex_InitializeTolvexEx(directory_.string().c_str());
    }
    ~ReferenceEngine() override { EXPECT_EQ(Tolvex_EndTolvexEx(handle_), 0); }

    /// Rates the record with texts, by their columns, written over it.
    EngineResultBlock Rate(const std::string& edits = "") {
        for (const auto& [column, text] : Table<2>(edits)) Put(std::stoul(column), text);
        EngineResultBlock block{960, 7, 7, {}, {}};
        Tolvex_RateShipment2Ex(handle_, &rated_, &block);
        return block;
    }
    void Put(std::size_t column, const std::string& text) {
        std::ranges::copy(text, reinterpret_cast<char*>(&rated_) + column);
    }
    /// Makes the record the first sample shipment, as a library requests it.
    void TakeWorkedExample() {
        memset(&rated_, ' ', sizeof rated_);
        for (auto& line : rated_.ClassLines) FillField(line.Weight, '0');
        Put(38, {"atlanta\0left over", 17});
        for (const auto& [column, text] :
             Table<2>("11 SMPLNATLN01-06-202530303 55 60601 265 0270_001205 295 02100000695 194 Y "
                      "236 10000 867 _0000_4550_4550_4550_4550_4550_4550_4550_4550_4550"))
            Put(std::stoul(column), text);
    }
    EngineRateRecord rated_;
    void* handle_;
};

TEST_F(ReferenceEngine, RatesTheWorkedExample) {
    TakeWorkedExample();
    Rate();
    const auto& lines = rated_.ClassLines;
    EXPECT_EQ(Columns(lines[0].Rate, lines[0].Charge, lines[1].Rate, lines[1].Charge),
              "0038.30|000461.52|0052.10|000362.10|");
    EXPECT_EQ(Columns(rated_.ExtraWeight, rated_.ExtraRate, rated_.ExtraCharge),
              "000100|0038.30|000038.30|");
    EXPECT_EQ(Totals(rated_), "    |001900|002000|45.50|   392.17|   469.75|");
    EXPECT_EQ(Columns(rated_.MinChargeFirst, rated_.MinChargeSecond, rated_.OrigCity,
                      rated_.OrigState, rated_.RateCode),
              "0095.00|0012.50|Atlanta          |GA|       2041|");
    ASSERT_EQ(rated_.BreakEntryCount, 18);
    EXPECT_EQ(Columns(rated_.BreakKinds), "1S1S1S1S1S1S1S1S1S            |");
    const int32_t dollars[] = {108,  1,    149,  273,  249,  456,  417,  766,  828,
                               1520, 1352, 2480, 1995, 3660, 2502, 4590, 2987, 5480};
    for (std::size_t i = 0; i < 18; ++i) EXPECT_EQ(rated_.BreakAmounts[i], dollars[i]) << i;
}

TEST_F(ReferenceEngine, AppliesFactorDiscountAndMinimumOrRefuses) {
    const std::pair<const char*, std::string> rows[] = {
        {"867 _1250", "    |001900|002000|12.50|   107.74|   754.18|"},
        {"887 _1000", "    |001900|002000|10.00|    86.19|   775.73|"},
        {"877 _2000_9999", "    |001900|002000|20.00|   172.38|   689.54|"},
        {"194 N 236 10550", "    |001900|002000| 0.00|     0.00|   909.39|"},
        {"265 02___000000 295 0285_000095", "    |000095|000095|45.50|    32.85|   107.50|"},
        {"11 SMPLFAK1 55 75201", "    |001900|002000|45.50|   363.09|   434.92|"},
        {"265 021000_4930", "    |005625|005625|45.50|  1057.02|  1266.11|"},
        {"265 0250_050000", "    |050695|050695|45.50|  2447.57|  2931.70|"}};
    for (const auto& [edits, totals] : rows) {
        TakeWorkedExample();
        Rate(edits);
        EXPECT_EQ(Totals(rated_), totals) << edits;
    }
    // What it does not know it refuses with a status that has a message, and rates nothing.
    for (const auto& [column, edit, status] :
         Table<3>("475 0272_000100 0011  11 SMPLNATX 0101  20 01-05-2025 0102  30 34012 0111 "
                  "55 6060_ 0112  55 75201 0113  475 0270_00x100 0114  475 0270_999999 0114 "
                  "236 00000 0115")) {
        TakeWorkedExample();
        Put(std::stoul(column), edit);
        EXPECT_EQ(Rate().Verdict, 0);
        EXPECT_EQ(Totals(rated_), status + "|000000|000000| 0.00|     0.00|     0.00|");
        char text[90] = {};
        CopyText(text, status);
        EXPECT_EQ(Tolvex_GetErrorStringEx(handle_, text), text);
    }
}

TEST_F(ReferenceEngine, OffersTheCitiesAtAPostalCode) {
    TakeWorkedExample();
    EXPECT_EQ(Rate("30 30339___None_of_the_above").NoAlternatives, 0);
    EXPECT_EQ(Columns(rated_.Status, rated_.NetCharge), "0123|   469.75|");
    EngineListBlock list{800, 7, {}, {}, {}};
    Tolvex_RateShipment2Ex(handle_, &rated_, &list);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(Columns(list.Header, list.Entries[1].Code, list.Entries[1].Text),
              "30339 |GA|Vinings          |");
}

TEST_F(ReferenceEngine, SurvivesMalformedFilesAndAnyArgument) {
    TakeWorkedExample();
    std::mt19937 random(20250106);
    for (int run = 0; run < 3000; ++run) {
        if (run % 3 == 0) TakeWorkedExample();
        Put(random() % 920, std::string(1, static_cast<char>(random())));
        EXPECT_EQ(Rate().Verdict, 0);
    }
    void* const ended = Tolvex_InitializeTolvexEx(nullptr);
    Tolvex_EndTolvexEx(ended);
    EXPECT_EQ(Tolvex_EndTolvexEx(ended) + Tolvex_EndTolvexEx(&rated_), 2);
    EXPECT_EQ(Tolvex_RateShipment2Ex(ended, nullptr, nullptr), 0);
    std::ofstream(directory_ / "tolvex-tariffs.txt", std::ios::app) << "SMPLNEWX | 13-06-2025\n";
    EXPECT_EQ(Tolvex_Set_TolvexdataEx(handle_, directory_.string().c_str()), 0);
    EXPECT_EQ(Rate().Verdict, -1);
}

}  // namespace hundredweight
