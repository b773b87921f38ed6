// A base-rate engine that does what a test says and keeps a log of its calls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/engine.h"
#include "support/tariff_fixture.h"

namespace hundredweight {

/// Stands in the process's engine binding as long as it lives; afterwards nothing is bound.
struct ScriptedEngine {
    ScriptedEngine();
    ~ScriptedEngine() { engine = Engine{}; }

    std::vector<std::string> calls;
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
std::string RateRecordBytes();
/// Writes into the engine rate record as an engine does.
void Answer(std::size_t offset, std::string_view text);
template <class Number>
void AnswerNumber(std::size_t offset, Number value) {
    Answer(offset, {reinterpret_cast<const char*>(&value), sizeof value});
}

/// A running engine that answers with an empty record, and a record that rates through it.
class RatingTest : public TariffTest {
 protected:
    RatingTest();

    ScriptedEngine engine_;
};

}  // namespace hundredweight
