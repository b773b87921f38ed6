#include "support/scripted_engine.h"

namespace hundredweight {
namespace {

ScriptedEngine* current = nullptr;

ScriptedEngine& Log(const char* call, void* used_handle) {
    EXPECT_EQ(used_handle, current->handle);
    current->calls.push_back(call);
    return *current;
}

}  // namespace

ScriptedEngine::ScriptedEngine() {
    current = this;
    engine.entry_points = {
        [](const char* directory) HWT_CALL {
            current->calls.push_back(std::string("start ") + directory);
            return current->handle;
        },
        [](void* used, const char* directory) HWT_CALL {
            Log("directory ", used).calls.back() += directory;
            return 0;
        },
        [](void* used, EngineTablesRecord* record)
            HWT_CALL { return Log("tables", used).tables(*record); },
        [](void* used, EngineVersionBlock* block) HWT_CALL {
            memcpy(block, Log("version", used).version_block.data(), sizeof *block);
            return 0;
        },
        [](void* used) HWT_CALL { return Log("end", used).end_result; },
        [](void* used, EngineRateRecord* record, void* block) HWT_CALL {
            EXPECT_EQ(record, &engine.EngineRateRecord);
            const bool second = block == engine.EngineListBlock.get();
            EXPECT_TRUE(second || block == engine.EngineResultBlock.get());
            const ScriptedEngine& script = Log(second ? "list" : "rate", used);
            second ? script.list(*engine.EngineListBlock) : script.rate(*engine.EngineResultBlock);
            return 0;
        },
        [](void* used, EfcRecord* buffer, int32_t index) HWT_CALL -> EfcRecord* {
            const auto& record = Log("table", used).effective_tables[static_cast<size_t>(index)];
            memcpy(buffer, record.data(), record.size());
            return record.empty() ? nullptr : buffer;
        },
        [](void* used) HWT_CALL { return Log("size", used).effective_table_size; },
        [](void* used, char* buffer) HWT_CALL { return Log("text", used).error_text(buffer); },
        [](void* used, char* letters, const char* zip)
            HWT_CALL { return Log("state", used).state(letters, zip); }};
}

std::string RateRecordBytes() {
    return {reinterpret_cast<const char*>(&engine.EngineRateRecord), sizeof(EngineRateRecord)};
}

void Answer(std::size_t offset, std::string_view text) {
    memcpy(reinterpret_cast<char*>(&engine.EngineRateRecord) + offset, text.data(), text.size());
}

RatingTest::RatingTest() {
    context_.UseEngine = 1;
    PutText(context_.OrigZip, "12345");
    PutText(context_.DestZip, "90210");
    PutText(context_.TariffName, "TARIFF01");
    CopyText(context_.LevelFileDate, "01-31-2024");
    EXPECT_EQ(InitializeTolvexdll(&context_), 1);
    Answer(976, std::string(1180, '\0'));
    engine_.calls.clear();
}

}  // namespace hundredweight
