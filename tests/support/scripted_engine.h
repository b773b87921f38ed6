// A base-rate engine that does what a test says and keeps a log of its calls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/engine.h"
#include "support/table.h"

namespace hundredweight {

/// Stands in the process's engine binding as long as it lives; afterwards nothing is bound.
struct ScriptedEngine {
    ScriptedEngine() {
        current = this;
        engine.entry_points = {
            [](const char* directory)
                HWT_CALL { return Log(std::string("start:") + directory).handle; },
            [](void* used, const char* directory)
                HWT_CALL { return Log(std::string("directory:") + directory, used), 0; },
            [](void* used, EngineTablesRecord* record)
                HWT_CALL { return Log("tables", used).tables(*record); },
            [](void* used, EngineVersionBlock* block) HWT_CALL {
                memcpy(block, Log("version", used).version_block.data(), sizeof *block);
                return 0;
            },
            [](void* used) HWT_CALL { return Log("end", used).end_result; },
            [](void* used, EngineRateRecord* record, void* block) HWT_CALL {
                EXPECT_EQ(record, &engine.EngineRateRecord);
                if (block == engine.EngineListBlock.get())
                    Log("list", used).list(*engine.EngineListBlock);
                else if (block == engine.EngineResultBlock.get())
                    Log("rate", used).rate(*engine.EngineResultBlock);
                return 0;
            },
            [](void* used, EfcRecord* buffer, int32_t index) HWT_CALL -> EfcRecord* {
                const auto& record =
                    Log("table", used).effective_tables[static_cast<size_t>(index)];
                memcpy(buffer, record.data(), record.size());
                return record.empty() ? nullptr : buffer;
            },
            [](void* used) HWT_CALL { return Log("size", used).effective_table_size; },
            [](void* used, char* buffer) HWT_CALL { return Log("text", used).error_text(buffer); },
            [](void* used, char* letters, const char* zip)
                HWT_CALL { return Log("state", used).state(letters, zip); }};
    }
    ~ScriptedEngine() { engine = Engine{}; }
    static ScriptedEngine& Log(const std::string& call, void* used_handle = current->handle) {
        EXPECT_EQ(used_handle, current->handle);
        current->calls += ' ' + call;
        return *current;
    }

    inline static ScriptedEngine* current;
    std::string calls;      ///< A blank before each.
    void* handle = &calls;  ///< What a start returns; every later call must bring it.
    std::vector<std::string> effective_tables;  ///< 17 bytes each; an empty one cannot be read.
    int32_t effective_table_size = 0, end_result = 0;
    std::string version_block = std::string(108, '\0');
    std::function<void(EngineResultBlock&)> rate = [](auto&) {};
    std::function<void(EngineListBlock&)> list = [](auto&) {};
    std::function<int32_t(EngineTablesRecord&)> tables = [](auto&) { return 1; };
    std::function<char*(char*)> error_text = [](char* buffer) { return buffer; };
    std::function<int32_t(char*, const char*)> state = [](char*, const char*) { return 0; };
};

/// The bytes of the process's engine rate record.
inline std::string RateRecordBytes() {
    return {reinterpret_cast<const char*>(&engine.EngineRateRecord), sizeof(EngineRateRecord)};
}
/// Writes into the engine rate record as an engine does.
inline void Answer(std::size_t offset, std::string_view text) {
    memcpy(reinterpret_cast<char*>(&engine.EngineRateRecord) + offset, text.data(), text.size());
}
template <class Number>
void AnswerNumber(std::size_t offset, Number value) {
    Answer(offset, {reinterpret_cast<const char*>(&value), sizeof value});
}

/// A running engine that answers with an empty record, and a record that rates through it.
struct RatingTest : TariffTest {
    RatingTest() {
        context_.UseEngine = 1;
        PutText(context_.OrigZip, "12345");
        PutText(context_.DestZip, "90210");
        PutText(context_.TariffName, "TARIFF01");
        CopyText(context_.LevelFileDate, "01-31-2024");
        EXPECT_EQ(InitializeTolvexdll(&context_), 1);
        Answer(976, std::string(1180, '\0'));
        engine_.calls.clear();
    }

    ScriptedEngine engine_;
};

}  // namespace hundredweight
