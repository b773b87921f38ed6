#include <hundredweight/platform.h>

#include <fstream>
#include <random>
#include <regex>
#include <tuple>

#include "reference/samples/sample_data.h"
#include "servguide/service_guide.h"
#include "support/tariff_fixture.h"

namespace hundredweight {
namespace {

class ReferenceServiceGuide : public TariffTest {
 protected:
    ReferenceServiceGuide() {
        samples::WriteServiceGuideData(directory_);
        context_.UseServiceGuide = 1;
        context_.ServiceGuideModule = module_;
        EXPECT_EQ(With(GetSGAddresses(&context_, 0)), Outcome(1, 0)) << PartnerLibraryError();
        EXPECT_EQ(InitializeSGdll(&context_), 1);
    }
    ~ReferenceServiceGuide() override {
        EndSGdll(&context_);
        service_guide = {};
        UnloadPartnerLibrary(module_);
    }

    Outcome AskForService(const char* origin, const char* destination) {
        PutText(context_.OrigZip, origin);
        PutText(context_.DestZip, destination);
        context_.ErrorCode = 0;
        return With(GetService(&context_));
    }
    /// Terminal and service of both points, values A, B and C.
    std::string Service() const {
        return Printed(context_.OrigTerminal) + context_.OrigServiceCode + " " +
               Printed(context_.DestTerminal) + context_.DestServiceCode + " " +
               Printed(context_.SgValueA) + "," + Printed(context_.SgValueB) + "," +
               Printed(context_.SgValueC);
    }

    void* const module_ = LoadPartnerLibrary(HWT_SERVICE_GUIDE);
    ServiceGuideBlock& block_ = service_guide.block;
};

TEST_F(ReferenceServiceGuide, TellsTerminalsServicesAndDays) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"30303", "60601", "ATL01D CHI01D 02,01,00"},
        {"31999", "12000", "ATL01I NYC01I 02,01,00"},
        {"60601", "M5H2N2", "CHI01D TOR01D 03,02,01"},
        {"K1A0B1", "60601", "TOR01I CHI01D 03,02,01"},
        {"30339", "30303", "ATL01D ATL01D 01,,00"},
        {"90012", "M5H2N2", "LAX01D TOR01D ,,00"},  // No days on file.
        {"75201", "99501", "DAL01D XXX01I ,,00"},
        {"10001", "32000", "NYC01D   ,,"},  // One point alone is known.
        {"m5h2n2", "11373", "  NYC01D ,,"}};
    for (const auto& [origin, destination, service] : cases) {
        EXPECT_EQ(AskForService(origin, destination), Outcome(1, 0)) << origin;
        EXPECT_EQ(Service(), service) << origin << " to " << destination;
    }
    for (const char* unknown : {"04101", "6060", "606011", "MMH2N2", ""})
        EXPECT_EQ(AskForService(unknown, "04101"), Outcome(0, 533)) << unknown;
}

/// The texts of a terminal, with a bar for the blanks and the terminator behind each.
std::string Texts(const TerminalRecord& terminal) {
    const std::string bytes(reinterpret_cast<const char*>(&terminal), sizeof terminal);
    return std::regex_replace(bytes, std::regex(" *\\x00"), "|");
}

TEST_F(ReferenceServiceGuide, DescribesTheServingTerminals) {
    AskForService("99501", "30303");
    EXPECT_EQ(With(GetTerminals(&context_)), Outcome(1, -1));
    EXPECT_EQ(Texts(context_.OrigTerminalRecord),
              "Served on request|XXX01|||||||800-555-0100||||service@carrier.example|");
    EXPECT_EQ(Texts(context_.DestTerminalRecord),
              "Atlanta Terminal|ATL01|1250 Moreland Avenue SE|Gate 3|Atlanta|GA|30316-3302|"
              "404-555-0120|800-555-0120|404-555-0121|Mon-Fri 07:00-19:00, Sat 08:00-12:00|"
              "Dana Whitfield|atlanta@carrier.example|");
    AskForService("30303", "04101");
    EXPECT_EQ(With(GetTerminals(&context_)), Outcome(0, 533));
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
        EXPECT_EQ(AskForService("30303", "60601"), started ? Outcome(1, 0) : Outcome(0, 533));
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

}  // namespace
}  // namespace hundredweight
