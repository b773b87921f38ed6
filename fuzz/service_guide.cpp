// A service guide whose answers come from the input.
#include <algorithm>

#include "harness.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

constexpr const char* kAnswers[] = {"start",        "both points",    "first point",
                                    "second point", "first terminal", "second terminal",
                                    "end"};

Parts answers;
std::size_t requests;  ///< Of the call that runs.

/// Writes an answer, zeros behind it, over the block, all of which is the guide's to write.
int32_t Answer(char* block, std::size_t answer) {
    ServiceGuideBlock whole = {};
    ContentOf(answers, kAnswers[std::min(answer, std::size(kAnswers) - 1)])
        .copy(reinterpret_cast<char*>(&whole), sizeof whole);
    std::memcpy(block, &whole, sizeof whole);
    return 0;
}

DataDirectory& Directory() {
    static DataDirectory directory({});
    return directory;
}

void CheckTerminal(const TerminalRecord& record) {
    std::size_t end = 0;
    for (const int size : {51, 6, 51, 51, 31, 3, 11, 13, 13, 13, 101, 51, 51}) {
        end += static_cast<std::size_t>(size);
        Require(reinterpret_cast<const char*>(&record)[end - 1] == '\0',
                "a terminal's texts end in their fields");
    }
}

}  // namespace

extern "C" {

HWT_API int32_t HWT_CALL ServGd_Initialize(char* block, char*) {
    return Answer(block, 0);
}
HWT_API int32_t HWT_CALL ServGd_GetServGuideData(char* block, char*) {
    return Answer(block, 1 + requests++);
}
HWT_API int32_t HWT_CALL ServGd_GetTerminals(char* block, char*) {
    return Answer(block, 4 + requests++);
}
HWT_API int32_t HWT_CALL ServGd_GetTermToTermDays(char*, char*) {
    return 0;
}
HWT_API uint8_t HWT_CALL ServGd_Terminate(void) {
    return Values(ContentOf(answers, "end")).Byte();
}
}

const Parts& fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all = {{"OrigZip", "30303"}, {"DestZip", "M5H2N2"},          {"SetByte255", "1"},
                     {"SetByte260", "1"},  {"BlankUnknownTerminals", "Y"}, {"DataDir", ""}};
        for (const char* answer : kAnswers) all.push_back({answer, "1001"});
        return all;
    }();
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    answers = ReadParts(data, size);
    Record record(Directory());
    record.PutFields(answers);
    record->UseServiceGuide = 1;
    record.CallTwice("a guide starts alike twice", InitializeSGdll);
    record.CallTwice("a guide is asked for services alike twice", [](RateContext* context) {
        requests = 0;
        return GetService(context);
    });
    record.CallTwice("a guide is asked for terminals alike twice", [](RateContext* context) {
        requests = 0;
        return GetTerminals(context);
    });
    CheckTerminal(record->OrigTerminalRecord);
    CheckTerminal(record->DestTerminalRecord);
    return 0;
}
