// The stand-ins of the partner libraries.
#include <hundredweight/platform.h>

#include <random>
#include <regex>

#include "reference/engine/entry_points.h"
#include "reference/samples/sample_data.h"
#include "servguide/service_guide.h"
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
        TakeWorkedExample();
    }
    ~ReferenceEngine() override { EXPECT_EQ(Tolvex_EndTolvexEx(handle_), 0); }

    /// Rates the record with texts written over it: "194=N,236=10550".
    EngineResultBlock Rate(const std::string& edits = "") {
        std::istringstream list(edits);
        for (std::string edit; std::getline(list, edit, ',');)
            Put(std::stoul(edit), edit.substr(edit.find('=') + 1));
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
    Rate();
    const auto& [first, second] = std::tie(rated_.ClassLines[0], rated_.ClassLines[1]);
    EXPECT_EQ(
        Columns(first.Rate, first.Charge, second.Rate, second.Charge, rated_.ExtraWeight,
                rated_.ExtraRate, rated_.ExtraCharge, rated_.MinChargeFirst, rated_.MinChargeSecond,
                rated_.OrigCity, rated_.OrigState, rated_.RateCode, rated_.BreakKinds),
        "0038.30|000461.52|0052.10|000362.10|000100|0038.30|000038.30|0095.00|0012.50|"
        "Atlanta          |GA|       2041|1S1S1S1S1S1S1S1S1S            |");
    EXPECT_EQ(Totals(rated_), "    |001900|002000|45.50|   392.17|   469.75|");
    std::string dollars;
    for (int16_t i = 0; i < rated_.BreakEntryCount; ++i)
        dollars += std::to_string(rated_.BreakAmounts[i]) + ' ';
    EXPECT_EQ(dollars,
              "108 1 149 273 249 456 417 766 828 1520 1352 2480 1995 3660 2502 4590 2987 5480 ");
}

TEST_F(ReferenceEngine, AppliesFactorDiscountAndMinimumOrRefuses) {
    // What it does not know it refuses with a status that has a message, and rates nothing (-).
    for (const auto& [edits, status, rated] : Table<3>(R"(
        867=_1250 ____ 001900|002000|12.50|___107.74|___754.18|
        887=_1000 ____ 001900|002000|10.00|____86.19|___775.73|
        877=_2000_9999 ____ 001900|002000|20.00|___172.38|___689.54|
        194=N,236=10550 ____ 001900|002000|_0.00|_____0.00|___909.39|
        265=02___000000,295=0285_000095 ____ 000095|000095|45.50|____32.85|___107.50|
        11=SMPLFAK1,55=75201 ____ 001900|002000|45.50|___363.09|___434.92|
        265=021000_4930 ____ 005625|005625|45.50|__1057.02|__1266.11|
        265=0250_050000 ____ 050695|050695|45.50|__2447.57|__2931.70|
        475=0272_000100 0011 -  11=SMPLNATX 0101 -    20=01-05-2025 0102 -    30=34012 0111 -
        55=6060_ 0112 -         55=75201 0113 -       475=0270_00x100 0114 -
        475=0270_999999 0114 -  236=00000 0115 -)")) {
        TakeWorkedExample();
        EXPECT_EQ(Rate(edits).Verdict, 0);
        const std::string nothing = "000000|000000| 0.00|     0.00|     0.00|";
        EXPECT_EQ(Totals(rated_), status + '|' + (rated == "-" ? nothing : rated)) << edits;
        char text[90] = {};
        CopyText(text, status);
        EXPECT_TRUE(rated != "-" || Tolvex_GetErrorStringEx(handle_, text) == text) << edits;
    }
}

TEST_F(ReferenceEngine, OffersTheCitiesAtAPostalCode) {
    EXPECT_EQ(Rate("30=30339   None of the above").NoAlternatives, 0);
    EXPECT_EQ(Columns(rated_.Status, rated_.NetCharge), "0123|   469.75|");
    EngineListBlock list{800, 7, {}, {}, {}};
    Tolvex_RateShipment2Ex(handle_, &rated_, &list);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(Columns(list.Header, list.Entries[1].Code, list.Entries[1].Text),
              "30339 |GA|Vinings          |");
}

TEST_F(ReferenceEngine, SurvivesMalformedFilesAndAnyArgument) {
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

struct ReferenceServiceGuide : TariffTest {
    ReferenceServiceGuide() {
        samples::WriteServiceGuideData(directory_);
        context_.UseServiceGuide = 1;
        context_.ServiceGuideModule = module_;
        EXPECT_EQ(GetSGAddresses(&context_, 0), 1) << PartnerLibraryError();
        EXPECT_EQ(InitializeSGdll(&context_), 1);
    }
    ~ReferenceServiceGuide() override {
        EndSGdll(&context_);
        service_guide = {};
        UnloadPartnerLibrary(module_);
    }

    /// Result and code; then terminal and service of both points, values A, B and C.
    std::string AskForService(const std::string& origin, const std::string& destination) {
        PutText(context_.OrigZip, origin);
        PutText(context_.DestZip, destination);
        const std::string told = Told(context_, GetService(&context_));
        return told + ' ' + Printed(context_.OrigTerminal) + context_.OrigServiceCode + ' ' +
               Printed(context_.DestTerminal) + context_.DestServiceCode + ' ' +
               Printed(context_.SgValueA) + ',' + Printed(context_.SgValueB) + ',' +
               Printed(context_.SgValueC);
    }

    void* const module_ = LoadPartnerLibrary(HWT_SERVICE_GUIDE);
    ServiceGuideBlock& block_ = service_guide.block;
};

TEST_F(ReferenceServiceGuide, TellsTerminalsServicesAndDays) {
    // No days are on file from Los Angeles; of the last two pairs one point alone is known.
    for (const auto& [origin, destination, service] : Table<3>(R"(
        30303 60601 1:0_ATL01D_CHI01D_02,01,00   31999 12000 1:0_ATL01I_NYC01I_02,01,00
        60601 M5H2N2 1:0_CHI01D_TOR01D_03,02,01  K1A0B1 60601 1:0_TOR01I_CHI01D_03,02,01
        30339 30303 1:0_ATL01D_ATL01D_01,,00     90012 M5H2N2 1:0_LAX01D_TOR01D_,,00
        75201 99501 1:0_DAL01D_XXX01I_,,00       10001 32000 1:0_NYC01D___,,
        m5h2n2 11373 1:0___NYC01D_,,)"))
        EXPECT_EQ(AskForService(origin, destination), service) << origin << destination;
    for (const char* unknown : {"04101", "6060", "606011", "MMH2N2", ""})
        EXPECT_EQ(AskForService(unknown, "04101").substr(0, 5), "0:533") << unknown;
}

/// The texts of a terminal, with a bar for the blanks and the terminator behind each.
std::string Texts(const TerminalRecord& terminal) {
    const std::string bytes(reinterpret_cast<const char*>(&terminal), sizeof terminal);
    return std::regex_replace(bytes, std::regex(" *\\x00"), "|");
}

TEST_F(ReferenceServiceGuide, DescribesTheServingTerminals) {
    AskForService("99501", "30303");
    EXPECT_EQ(Told(context_, GetTerminals(&context_)), "1:-1");
    EXPECT_EQ(Texts(context_.OrigTerminalRecord),
              "Served on request|XXX01|||||||800-555-0100||||service@carrier.example|");
    EXPECT_EQ(Texts(context_.DestTerminalRecord),
              "Atlanta Terminal|ATL01|1250 Moreland Avenue SE|Gate 3|Atlanta|GA|30316-3302|"
              "404-555-0120|800-555-0120|404-555-0121|Mon-Fri 07:00-19:00, Sat 08:00-12:00|"
              "Dana Whitfield|atlanta@carrier.example|");
    AskForService("30303", "04101");
    EXPECT_EQ(Told(context_, GetTerminals(&context_)), "0:533");
}

TEST_F(ReferenceServiceGuide, StartsOnWellFormedFilesAlone) {
    const std::string name(50, 'n'), others = " | | | | | | | | | | |";
    const std::tuple<const char*, std::string, int32_t> cases[] = {
        {"terminals", name + "|MEM01" + others, 1}, {"terminals", name + "n|MEM01" + others, 0},
        {"terminals", name + "|" + others, 0},      {"terminals", name + "|ATL01" + others, 0},
        {"points", "380-381 | ATL01 | D # TN", 1},  {"points", "380-381 | MEM01 | D", 0},
        {"points", "381-380 | ATL01 | D", 0},       {"points", "380-381 | ATL01 | DI", 0},
        {"transit", "LAX01 | TOR01 | 12 | |", 1},   {"transit", "LAX01 | TOR01 | 123 | |", 0},
        {"transit", "LAX01 | TOR01 | -1 | |", 0},   {"transit", "LAX01 | TOR01 | | |", 0},
        {"transit", "LAX01 | MEM01 | 1 | |", 0},    {"transit", "LAX01 | TOR01 | 1", 0}};
    for (const auto& [file, row, started] : cases) {
        samples::WriteServiceGuideData(directory_);
        const auto path = directory_ / (std::string("servgd-") + file + ".txt");
        std::ofstream(path, std::ios::app) << row << "\n";
        EXPECT_EQ(InitializeSGdll(&context_), started) << row;
        EXPECT_EQ(AskForService("30303", "60601").substr(0, 5), started ? "1:0 A" : "0:533");
        EXPECT_EQ(EndSGdll(&context_), started);
        std::filesystem::remove(path);
        EXPECT_EQ(InitializeSGdll(&context_), 0) << path;
    }
}

TEST_F(ReferenceServiceGuide, SurvivesAnyBlock) {
    const auto& guide = service_guide.entry_points;
    char* const bytes = reinterpret_cast<char*>(&block_);
    AskForService("10001", "M5H2N2");
    FillField(block_.ValueC, 'x');
    EXPECT_EQ(guide.ServGd_GetTermToTermDays(bytes, block_.FirstTerminal), 1);
    EXPECT_EQ(WholeField(block_.ValueC), "01");
    EXPECT_EQ(guide.ServGd_GetServGuideData(bytes, nullptr), 0);
    EXPECT_EQ(guide.ServGd_GetServGuideData(nullptr, block_.FirstZip), 0);
    std::mt19937 random(20250106);
    for (int run = 0; run < 1000; ++run) {
        std::generate_n(bytes, sizeof block_, [&] { return static_cast<char>(random()); });
        if (run % 2) CopyText(block_.RequestKind, "UNQ");
        EXPECT_EQ(guide.ServGd_GetServGuideData(bytes, block_.FirstZip), 0);
        EXPECT_EQ(guide.ServGd_GetTerminals(bytes, block_.TerminalZip), 0);
        EXPECT_EQ(WholeField(block_.Status), run % 2 ? "1011" : "1003");
    }
    FillField(block_.DataDirectory, '/');
    EXPECT_EQ(guide.ServGd_Initialize(bytes, &block_.GuideBytes1[0]), 0);
}

}  // namespace hundredweight
