// A base-rate engine whose answers come from the input, and everything that a host calls behind it.
#include <algorithm>
#include <cstring>

#include "calls.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

/// The answers of the engine that is bound, by the names of their parts.
Parts answers;

/// Lays an answer over a record of the library's, all of whose bytes are the engine's to write.
template <class Record>
bool Answer(const char* name, Record* record) {
    const std::string_view answer = ContentOf(answers, name);
    Record whole = *record;
    answer.copy(reinterpret_cast<char*>(&whole), sizeof whole);
    *record = whole;
    return !answer.empty();
}

int32_t Number(const char* name) {
    return Values(ContentOf(answers, name)).Number();
}

DataDirectory& Directory() {
    static DataDirectory directory(samples::TariffSetFiles({}));
    return directory;
}

}  // namespace

extern "C" {

HWT_API void* HWT_CALL Tolvex_InitializeTolvexEx(const char*) {
    return ContentOf(answers, "start").empty() ? &answers : nullptr;
}
HWT_API int32_t HWT_CALL Tolvex_Set_TolvexdataEx(void*, const char*) {
    return 0;
}
HWT_API int32_t HWT_CALL Tolvex_GetTablesEx(void*, EngineTablesRecord* record) {
    return Answer("tables", record) ? 1 : 0;
}
HWT_API int32_t HWT_CALL Tolvex_disp_verEx(void*, EngineVersionBlock* block) {
    Answer("version", block);
    return 0;
}
HWT_API int32_t HWT_CALL Tolvex_EndTolvexEx(void*) {
    return Number("end");
}
HWT_API int32_t HWT_CALL Tolvex_RateShipment2Ex(void*, EngineRateRecord* record, void* block) {
    Answer("rate", record);
    int32_t capacity = 0;
    std::memcpy(&capacity, block, sizeof capacity);
    if (capacity == sizeof(EngineListBlock::Entries)) {
        Answer("list", static_cast<EngineListBlock*>(block));
    } else {
        Answer("result", static_cast<EngineResultBlock*>(block));
    }
    // It asked by the size, which the library needs again for the next call.
    std::memcpy(block, &capacity, sizeof capacity);
    return 0;
}
HWT_API EfcRecord* HWT_CALL Tolvex_GetEffectiveTableEx(void*, EfcRecord* buffer, int32_t index) {
    Answer("effective table", buffer);
    return index < Number("effective tables") ? buffer : nullptr;
}
HWT_API int32_t HWT_CALL Tolvex_GetEffectiveTableSizeEx(void*) {
    return Number("effective count");
}
HWT_API char* HWT_CALL Tolvex_GetErrorStringEx(void*, char* buffer) {
    struct Text {
        char characters[90];
    };
    return Answer("error", reinterpret_cast<Text*>(buffer)) ? buffer : nullptr;
}
HWT_API int32_t HWT_CALL Tolvex_GetStateEx(void*, char* state, const char* postal_code) {
    struct Letters {
        char characters[2];
    };
    return std::strlen(postal_code) > 0 && Answer("state", reinterpret_cast<Letters*>(state)) ? 1
                                                                                              : 0;
}
}

const Parts& fuzz::SampleParts() {
    static const Parts parts = {{"start", ""},
                                {"end", ""},
                                {"version", ""},
                                {"effective count", "\2"},
                                {"effective tables", "\2"},
                                {"effective table", "SMPLNATL"},
                                {"tables", ""},
                                {"rate", ""},
                                {"result", ""},
                                {"list", ""},
                                {"error", "0123"},
                                {"state", "GA"},
                                {"calls", ""},
                                {"load", "1"},
                                // What a host sets before a rating; a rating writes no text there.
                                {"OrigZip", "30303"},
                                {"DestZip", "60601"},
                                {"OrigState", "GA"},
                                {"OrigCity", "Atlanta"},
                                {"DestState", "IL"},
                                {"DestCity", "Chicago"},
                                {"TariffName", "SMPLNATL"},
                                {"LevelFileDate", "01-06-2025"},
                                {"UseServiceGuide", "1"},
                                {"QuietEngineErrors", "1"},
                                {"EngineOptionOn", "1"},
                                {"LineClass", "100"},
                                {"LineWeight", "500"},
                                {"DefRecord", ""},
                                {"SetRecord", ""},
                                {"Profile", ""},
                                {"DiscountFloor", ""},
                                {"DiscountFlatPercent", ""},
                                {"DiscountBreakPercent", ""},
                                {"ZmcCount", "\2"},
                                {"WgtLoaded", "1"},
                                {"NameTablesLoaded", "Y"},
                                {"ScTable", "XX"}};
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    answers = ReadParts(data, size);
    Record record(Directory());
    record->UseEngine = 1;
    if (!ContentOf(answers, "load").empty()) {
        int32_t found = 0;
        OpenAllFiles(&*record, &found);
    }
    record.PutFields(answers);
    record.CallTwice("an engine starts once", InitializeTolvexdll);
    record.CallTwice("a shipment rates alike twice", RateAnew);
    record.CheckRatedTexts();
    MakeCalls(record, ContentOf(answers, "calls"));
    return 0;
}
