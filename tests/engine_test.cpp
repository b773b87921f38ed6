// The base-rate engine, and what is bound of both partner libraries.
#include "engine/engine.h"

#include <hundredweight/platform.h>

#include <regex>
#include <set>

#include "engine/effective_tables.h"
#include "platform/module.h"
#include "servguide/service_guide.h"
#include "support/failing_system.h"
#include "support/scripted_engine.h"
#include "tariff/name_tables.h"

namespace hundredweight {

struct BindingTest : TariffTest {
    /// Binds libraries that lack one name each, in the order in which the names are looked up.
    template <class EntryPoints, class Bind>
    void Expect(EntryPoints& entry_points, Bind bind, const std::string& names_and_codes) {
        std::istringstream rows(names_and_codes);
        std::vector<std::string> found;
        for (std::string lacking, code; rows >> lacking >> code; found.push_back(lacking)) {
            const std::string path = HWT_PARTNERS_WITHOUT + lacking + HWT_MODULE_SUFFIX;
            void* const module = LoadPartnerLibrary(path.c_str());
            ASSERT_NE(module, nullptr) << PartnerLibraryError();
            EXPECT_EQ(Told(context_, bind(module)), code == "0" ? "1:0" : "0:" + code);
            void* slots[sizeof entry_points / sizeof(void*)];
            memcpy(slots, &entry_points, sizeof slots);
            std::multiset<void*> bound(slots, std::end(slots)), functions;
            bound.erase(nullptr);
            for (const std::string& name : found)
                functions.insert(platform::ResolveEntryPoint(module, name.c_str()));
            EXPECT_TRUE(bound == functions) << path;
            entry_points = {};
            UnloadPartnerLibrary(module);
        }
    }
};

TEST_F(BindingTest, StopsAtTheFirstMissingEntryPoint) {
    context_.UseEngine = 1;
    const auto bind_engine = [&](void* module) {
        engine.EngineHandle = context_.EngineModule = module;
        const int32_t result = GetTolvexAddresses(&context_, 0);
        EXPECT_EQ(engine.EngineHandle, nullptr);
        EXPECT_TRUE(result == 1 || InitializeTolvexdll(&context_) == 0);
        return result;
    };
    Expect(engine.entry_points, bind_engine, R"(
        Tolvex_GetStateEx 400           Tolvex_GetErrorStringEx 401  Tolvex_InitializeTolvexEx 402
        Tolvex_Set_TolvexdataEx 403     Tolvex_GetEffectiveTableEx 404
        Tolvex_GetEffectiveTableSizeEx 405  Tolvex_GetTablesEx 406   Tolvex_RateShipment2Ex 407
        Tolvex_disp_verEx 408           Tolvex_EndTolvexEx 409       Tolvex_none 0)");
    const auto bind_guide = [&](void* module) {
        context_.ServiceGuideModule = module;
        return GetSGAddresses(&context_, 0);
    };
    Expect(service_guide.entry_points, bind_guide, R"(
        ServGd_Initialize 525         ServGd_GetServGuideData 527  ServGd_GetTerminals 528
        ServGd_GetTermToTermDays 528  ServGd_Terminate 529         ServGd_none 0)");
}

struct EngineTest : TariffTest {
    EngineTest() { context_.UseEngine = 1; }
    ScriptedEngine engine_;
};

TEST_F(EngineTest, StartsWhenUsedOnceAndAgainAfterItsEnd) {
    PutText(context_.DataDir, "DATA");
    engine_.effective_tables = {""};
    // What it is told: S to start, E to end, - and + while it is switched off and on; its complaint
    // at the end, the allocation that fails, its tables. What comes of it, and the engine's calls,
    // > for those that begin a start.
    for (const auto& [orders, complaint, failing, tables, told, calls] : Table<6>(R"(
        SSEE 0 0 0 1:0_1:0_1:0_1:0_ >_version_end      SSEE 1 0 0 1:0_1:0_0:0_1:0_ >_version_end
        -S+S-E+E 0 0 0 1:0_1:0_1:0_1:0_ >_version_end  SE 0 1 0 1:141_1:0_ >_version_end
        SESE 0 2 0 0:114_1:0_1:0_1:0_ >_end>_version_end
        SESE 0 3 0 0:113_1:0_1:0_1:0_ >_end>_version_end
        SE 0 0 1 1:140_1:0_ >_table_version_end)")) {
        SCOPED_TRACE(orders + complaint + failing + tables);
        engine_.calls.clear();
        engine_.end_result = std::stoi(complaint);
        engine_.effective_table_size = std::stoi(tables);
        const FailingMemory memory(std::stoi(failing));
        std::string done;
        for (const char order : orders) {
            if (Has("-+", order)) context_.UseEngine = order == '+';
            if (order == 'E') done += Told(context_, EndTolvexdll(&context_)) + ' ';
            if (order == 'S') done += Told(context_, InitializeTolvexdll(&context_)) + ' ';
            if (order == 'S' && done.ends_with("1:0 ") && context_.UseEngine != 0) {
                EXPECT_EQ(RateRecordBytes(), std::string(2160, ' '));
                ASSERT_TRUE(engine.EngineResultBlock && engine.EngineListBlock);
                EXPECT_EQ(+engine.EngineResultBlock->Capacity, 960);
                EXPECT_EQ(+engine.EngineListBlock->Capacity, 800);
            }
        }
        EXPECT_EQ(done, told);
        const std::regex begins(">");
        EXPECT_EQ(engine_.calls,
                  std::regex_replace(calls, begins, " start:DATA directory:DATA size"));
        EXPECT_FALSE(engine.EngineResultBlock || engine.EngineListBlock || engine.EngineHandle);
    }
}

TEST_F(EngineTest, VersionTextsOverlapAndStayInTheirFields) {
    Put(engine_.version_block, 0, "ABCDEFGHIJKLMNOPQRSTb12c1234");
    for (const auto& [offset, text] : Table<2>("76 D 79 E12 84 F"))
        Put(engine_.version_block, std::stoul(offset), text);
    const Span fields{offsetof(RateContext, EngineVersionA), 60};
    Fill(context_, fields, '#');
    const Untouched rest{context_, {fields, HWT_FIELD(EfcTable)}};
    InitializeTolvexdll(&context_);
    EXPECT_EQ(BytesOf(context_, fields),
              "ABCDEFGHIJKLMNOPQRSTb12c1234D##E12##" + Padded("F", 24, '#'));
    EndTolvexdll(&context_);
}

struct EffectiveTablesTest : RatingTest {
    std::string Build(const std::vector<std::string>& tables, int32_t size) {
        engine_.effective_tables = tables;
        engine_.effective_table_size = size;
        const EngineEntryPoints& calls = engine.entry_points;
        return Told(context_,
                    BuildEfcTable(context_, engine_.handle, calls.Tolvex_GetEffectiveTableSizeEx,
                                  calls.Tolvex_GetEffectiveTableEx));
    }
    std::string Entries(std::size_t count) const {
        return {reinterpret_cast<const char*>(context_.EfcTable), count * sizeof(EfcRecord)};
    }
    const std::string one_ = "TARIFF0120240131a", two_ = "TARIFF0220240131b",
                      bureau_ = "Bureau0120240131c";
};

TEST_F(EffectiveTablesTest, LeaveBureauTablesOut) {
    for (const auto& [source, names_loaded, counts] : Table<3>("N N 2:2  2 N 1:0  N Y 1:0")) {
        context_.TariffSourceCode = source[0];
        context_.NameTablesLoaded = names_loaded[0];
        context_.EfcSelection = 5;
        EXPECT_EQ(Build({bureau_, one_, bureau_, two_}, 4), "1:0");
        EXPECT_EQ(+context_.EfcSelection, 0);
        EXPECT_EQ(Joined(context_.EfcCount, context_.BureauCount), counts);
        EXPECT_EQ(Entries(6), Padded(one_ + two_, 6 * 17));
    }
    context_.NameTablesLoaded = 'N';
    for (const auto& [size, count] : {std::pair{0x10001, 1}, {0xFFFF, 0}, {0x8000, 0}}) {
        EXPECT_EQ(Build({one_}, size), "1:0");  // A signed 16-bit count.
        EXPECT_EQ(+context_.EfcCount, count) << size;
    }
    EXPECT_EQ(Build({one_, "", two_}, 3), "0:140");
    EXPECT_EQ(Entries(5), Padded(one_, 5 * 17));
    const FailingMemory memory(1);
    EXPECT_EQ(Build({one_}, 1), "0:141");
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
        return Joined(points, name, Printed(context_.TariffName));
    }
    const std::string cbs_ =
        "10000 10999 POINT120000 20000 POINT330000 39999 POINT4K1A0A1K1A9Z9POINT5";
    const std::string cmt_ =
        "POINT1POINT1TARIFF11POINT1POINT3TARIFF13POINT3POINT1TARIFF31POINT5POINT4TARIFF54";
};

TEST_F(NameTablesTest, PostalCodesLeadToATariffName) {
    WriteFile("ABC.CBS", cbs_ + "tail");
    WriteFile("ABC.CMT", cmt_ + "tail");
    ASSERT_EQ(Told(context_, ReadNameTables(context_)), "1:0");
    EXPECT_EQ(Joined(name_tables.CbsCount, name_tables.CmtCount), "4:4");
    for (const auto& [origin, destination, found] :
         Table<3>("10000 10999 1:1:TARIFF11  10999 20000 1:1:TARIFF13  20000 10500 1:1:TARIFF31 "
                  "K1A0A1 30000 1:1:TARIFF54  K1A9Z9x 39999 1:1:TARIFF54  20000 20000 1:0:######## "
                  "K1A9ZA 39999 0:0:########  09999 10000 0:0:########  11000 10000 0:0:######## "
                  "10000 40000 0:0:########  . 10000 0:0:########  10000 . 0:0:########"))
        EXPECT_EQ(LookUp(origin, destination), found + '#') << origin << ' ' << destination;
    EXPECT_EQ(FreeNameTables(), 1);
    EXPECT_EQ(LookUp("10000", "10000"), "0:0:#########");
}

TEST_F(NameTablesTest, AreReadTogetherOrFailWithoutACode) {
    WriteFile("ABC.CMT", cmt_);
    EXPECT_EQ(ReadNameTables(context_), 0);
    EXPECT_EQ(name_tables.CmtTable, nullptr);
    WriteFile("ABC.CBS", cbs_);
    // Each table and its layout for searches, which is not missed.
    const std::pair<int, const char*> found[] = {
        {0, "0:0:#########"}, {1, "1:1:TARIFF11#"}, {0, "1:0:#########"}, {1, "1:1:TARIFF11#"}};
    for (int failing = 1; failing <= 4; ++failing) {
        const FailingMemory memory(failing);
        const auto& [read, looked_up] = found[failing - 1];
        EXPECT_EQ(ReadNameTables(context_), read) << failing;
        EXPECT_EQ(LookUp("10000", "10000"), looked_up) << failing;
    }
    for (const auto read : {ReadCbsFile, ReadCmtFile}) {
        const BrokenFile broken;
        EXPECT_EQ(read(context_), 0);
    }
    EXPECT_EQ(std::string(name_tables.CbsTable->LowZip, 2), Padded("1", 2));
    WriteFile("ABC.CBS", "");
    EXPECT_EQ(Told(context_, ReadNameTables(context_)), "1:0");
    EXPECT_EQ(LookUp("10000", "10000"), "0:0:#########");
    CloseAllFiles(&context_);
    EXPECT_FALSE(name_tables.CbsTable || name_tables.CmtTable);
}

}  // namespace hundredweight
