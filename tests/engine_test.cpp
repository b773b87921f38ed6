#include "engine/engine.h"

#include <hundredweight/platform.h>

#include "support/failing_system.h"
#include "support/scripted_engine.h"
#include "support/table.h"

namespace hundredweight {

struct EngineTest : TariffTest {
    EngineTest() { context_.UseEngine = 1; }
    ScriptedEngine engine_;
};

TEST_F(EngineTest, BindingStopsAtTheFirstMissingEntryPoint) {
    int32_t missing = 0;
    for (const std::string absent :
         {"Tolvex_GetStateEx", "Tolvex_GetErrorStringEx", "Tolvex_InitializeTolvexEx",
          "Tolvex_Set_TolvexdataEx", "Tolvex_GetEffectiveTableEx", "Tolvex_GetEffectiveTableSizeEx",
          "Tolvex_GetTablesEx", "Tolvex_RateShipment2Ex", "Tolvex_disp_verEx", "Tolvex_EndTolvexEx",
          "none"}) {
        engine = Engine{};
        engine.EngineHandle = &engine_;
        void* const module =
            LoadPartnerLibrary((HWT_ENGINES_WITHOUT + absent + HWT_MODULE_SUFFIX).c_str());
        ASSERT_NE(module, nullptr) << PartnerLibraryError();
        context_.EngineModule = module;
        EXPECT_EQ(Told(context_, GetTolvexAddresses(&context_, 0)),
                  missing == 10 ? "1:0" : "0:" + std::to_string(400 + missing));
        EXPECT_EQ(engine.EngineHandle, nullptr);
        void* bound[10];
        memcpy(bound, &engine.entry_points, sizeof bound);
        EXPECT_EQ(10 - std::ranges::count(bound, nullptr), missing);
        EXPECT_TRUE(missing == 10 || InitializeTolvexdll(&context_) == 0) << absent;
        engine = Engine{};
        UnloadPartnerLibrary(module);
        ++missing;
    }
}

TEST_F(EngineTest, StartsWhenUsedOnceAndAgainAfterItsEnd) {
    context_.UseEngine = 0;
    EXPECT_EQ(InitializeTolvexdll(&context_), 1);
    engine.EngineHandle = engine_.handle;
    EXPECT_EQ(EndTolvexdll(&context_), 1);
    EXPECT_FALSE(engine.EngineResultBlock || context_.EfcTable || !engine_.calls.empty());
    engine.EngineHandle = nullptr;
    context_.UseEngine = 1;
    const std::string directory = Printed(context_.DataDir);
    const std::vector<std::string> calls = {"start " + directory, "directory " + directory, "size",
                                            "version", "end"};
    for (const int32_t complaint : {0, 1}) {
        engine_.end_result = complaint;
        engine_.calls.clear();
        EXPECT_EQ(InitializeTolvexdll(&context_) + InitializeTolvexdll(&context_), 2);
        EXPECT_EQ(RateRecordBytes(), std::string(2160, ' '));
        ASSERT_TRUE(engine.EngineResultBlock && engine.EngineListBlock);
        EXPECT_EQ(+engine.EngineResultBlock->Capacity, 960);
        EXPECT_EQ(+engine.EngineListBlock->Capacity, 800);
        EXPECT_EQ(With(EndTolvexdll(&context_)), Outcome(1 - complaint, 0));
        EXPECT_EQ(EndTolvexdll(&context_), 1);
        EXPECT_EQ(engine_.calls, calls);
        EXPECT_FALSE(engine.EngineResultBlock || engine.EngineListBlock || engine.EngineHandle);
    }
}

TEST_F(EngineTest, ShortMemoryHasItsCodesAndAfterAnEndAFreshStartFollows) {
    for (const auto& [failing, result, code] : {std::tuple{1, 1, 141}, {2, 0, 114}, {3, 0, 113}}) {
        auto memory = std::make_unique<FailingMemory>(failing);
        EXPECT_EQ(With(InitializeTolvexdll(&context_)), Outcome(result, code));
        memory.reset();
        EXPECT_EQ(EndTolvexdll(&context_), 1);
        EXPECT_EQ(InitializeTolvexdll(&context_), 1);
        EXPECT_TRUE(engine.EngineResultBlock && engine.EngineListBlock) << code;
        EXPECT_EQ(EndTolvexdll(&context_), 1);
    }
    engine_.effective_table_size = 1;
    engine_.effective_tables = {""};
    EXPECT_EQ(With(InitializeTolvexdll(&context_)), Outcome(1, 140));
}

TEST_F(EngineTest, VersionTextsOverlapAndStayInTheirFields) {
    Put(engine_.version_block, 0, "ABCDEFGHIJKLMNOPQRSTb12c1234");
    for (const auto& [offset, text] : Table<2>("76 D 79 E12 84 F"))
        Put(engine_.version_block, std::stoul(offset), text);
    const Span fields{offsetof(RateContext, EngineVersionA), 60};
    Fill(context_, fields, '#');
    const auto before = std::make_unique<RateContext>(context_);
    InitializeTolvexdll(&context_);
    EXPECT_EQ(BytesOf(context_, fields),
              "ABCDEFGHIJKLMNOPQRSTb12c1234D##E12##" + Padded("F", 24, '#'));
    ExpectAlikeOutside({fields, HWT_FIELD(EfcTable)}, *before, context_);
    EndTolvexdll(&context_);
}

}  // namespace hundredweight
