#include "engine/effective_tables.h"
#include "support/failing_system.h"
#include "support/scripted_engine.h"
#include "support/table.h"
#include "tariff/name_tables.h"

namespace hundredweight {

struct EffectiveTablesTest : RatingTest {
    Outcome Build(const std::vector<std::string>& tables, int32_t size) {
        engine_.effective_tables = tables;
        engine_.effective_table_size = size;
        const EngineEntryPoints& calls = engine.entry_points;
        return With(BuildEfcTable(context_, engine_.handle, calls.Tolvex_GetEffectiveTableSizeEx,
                                  calls.Tolvex_GetEffectiveTableEx));
    }
    std::string Entries(std::size_t count) const {
        return {reinterpret_cast<const char*>(context_.EfcTable), count * sizeof(EfcRecord)};
    }
    const std::string one_ = "TARIFF0120240131a", two_ = "TARIFF0220240131b",
                      bureau_ = "Bureau0120240131c";
};

TEST_F(EffectiveTablesTest, LeaveBureauTablesOut) {
    for (const auto& [source, names_loaded, counts] : Table<3>("N N 22  2 N 10  N Y 10")) {
        context_.TariffSourceCode = source[0];
        context_.NameTablesLoaded = names_loaded[0];
        context_.EfcSelection = 5;
        EXPECT_EQ(Build({bureau_, one_, bureau_, two_}, 4), Outcome(1, 0));
        EXPECT_EQ(+context_.EfcSelection, 0);
        EXPECT_EQ(std::to_string(10 * context_.EfcCount + context_.BureauCount), counts);
        EXPECT_EQ(Entries(6), Padded(one_ + two_, 6 * 17));
    }
    context_.NameTablesLoaded = 'N';
    for (const auto& [size, count] : {std::pair{0x10001, 1}, {0xFFFF, 0}, {0x8000, 0}}) {
        EXPECT_EQ(Build({one_}, size), Outcome(1, 0));  // A signed 16-bit count.
        EXPECT_EQ(+context_.EfcCount, count) << size;
    }
    EXPECT_EQ(Build({one_, "", two_}, 3), Outcome(0, 140));
    EXPECT_EQ(Entries(5), Padded(one_, 5 * 17));
    const FailingMemory memory(1);
    EXPECT_EQ(Build({one_}, 1), Outcome(0, 141));
    EXPECT_EQ(GetCurrentEfcRec(&context_, "TARIFF01 2024-01-31"), nullptr);
}

TEST_F(EffectiveTablesTest, AreFoundByNameAndDateWhateverTheSeparators) {
    Build({two_, one_, one_}, 3);
    for (const auto& [key, index] :
         Table<2>("TARIFF01_2024-01-31 1  TARIFF01x2024y01z31 1  TARIFF02_2024-01-31 0 "
                  "TARIFF03_2024-01-31 .  TARIFF01_2023-01-31 .  TARIFF01_2024-02-31 . "
                  "TARIFF01_2024-01-30 ."))
        EXPECT_EQ(GetCurrentEfcRec(&context_, key.c_str()),
                  index.empty() ? nullptr : context_.EfcTable + std::stoi(index))
            << key;
}

struct NameTablesTest : TariffTest {
    /// Results of the two look-ups, and the tariff name after them.
    std::string LookUp(std::string_view origin, std::string_view destination) {
        FillField(context_.OrigZip, '\0');
        CopyText(context_.OrigZip, origin);
        PutText(context_.DestZip, destination);
        FillField(context_.TariffName, '#');
        const int32_t points = GetTolvexBse(&context_), name = GetTolvexTariffName(&context_);
        return std::to_string(points) + std::to_string(name) + Printed(context_.TariffName);
    }
    const std::string cbs_ =
        "10000 10999 POINT120000 20000 POINT330000 39999 POINT4"
        "K1A0A1K1A9Z9POINT5";
    const std::string cmt_ =
        "POINT1POINT1TARIFF11POINT1POINT3TARIFF13POINT3POINT1TARIFF31"
        "POINT5POINT4TARIFF54";
};

TEST_F(NameTablesTest, PostalCodesLeadToATariffName) {
    WriteFile("ABC.CBS", cbs_ + "tail");
    WriteFile("ABC.CMT", cmt_ + "tail");
    ASSERT_EQ(With(ReadNameTables(context_)), Outcome(1, 0));
    EXPECT_EQ(std::pair(name_tables.CbsCount, name_tables.CmtCount), std::pair(4, 4));
    for (const auto& [origin, destination, found] :
         Table<3>("10000 10999 11TARIFF11  10999 20000 11TARIFF13  20000 10500 11TARIFF31 "
                  "K1A0A1 30000 11TARIFF54  K1A9Z9x 39999 11TARIFF54  20000 20000 10######## "
                  "K1A9ZA 39999 00########  09999 10000 00########  11000 10000 00######## "
                  "10000 40000 00########  . 10000 00########  10000 . 00########"))
        EXPECT_EQ(LookUp(origin, destination), found + '#') << origin << ' ' << destination;
    EXPECT_EQ(FreeNameTables(), 1);
    EXPECT_EQ(LookUp("10000", "10000"), "00#########");
}

TEST_F(NameTablesTest, AreReadTogetherOrFailWithoutACode) {
    WriteFile("ABC.CMT", cmt_);
    EXPECT_EQ(ReadNameTables(context_), 0);
    EXPECT_EQ(name_tables.CmtTable, nullptr);
    WriteFile("ABC.CBS", cbs_);
    for (const int failing : {1, 2}) {
        const FailingMemory memory(failing);
        EXPECT_EQ(ReadNameTables(context_), 0) << failing;
        EXPECT_EQ(LookUp("10000", "10000"), failing == 1 ? "00#########" : "10#########");
    }
    for (const auto read : {ReadCbsFile, ReadCmtFile}) {
        const BrokenFile broken;
        EXPECT_EQ(read(context_), 0);
    }
    EXPECT_EQ(std::string(name_tables.CbsTable->LowZip, 2), Padded("1", 2));
    WriteFile("ABC.CBS", "");
    EXPECT_EQ(With(ReadNameTables(context_)), Outcome(1, 0));
    EXPECT_EQ(LookUp("10000", "10000"), "00#########");
    CloseAllFiles(&context_);
    EXPECT_FALSE(name_tables.CbsTable || name_tables.CmtTable);
}

}  // namespace hundredweight
