// The texts that the reference engine and the reference service guide read, and a rating through
// them.
#include "harness.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

DataDirectory& Directory() {
    static DataDirectory directory(PartnerFiles());
    return directory;
}

}  // namespace

const Parts& fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all = Directory().FileParts();
        for (const char* field :
             {"OrigZip", "DestZip", "OrigCity", "DestCity", "OrigState", "DestState", "TariffName",
              "LevelFileDate", "LineClass", "LineWeight", "RateFactor", "DiscountOn",
              "DiscountFloor", "DiscountFlatPercent", "DiscountBreakPercent", "EngineOptionOn"}) {
            all.push_back({field, ""});
        }
        return all;
    }();
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const Parts parts = ReadParts(data, size);
    Directory().Put(parts);
    {
        Record record(Directory());
        record->UseEngine = 1;
        record->UseServiceGuide = 1;
        record.PutFields(parts);
        InitializeTolvexdll(&*record);
        InitializeSGdll(&*record);
        record.CallTwice("the service guide answers alike twice", GetService);
        record.CallTwice("the service guide answers terminals alike twice", GetTerminals);
        const RateContext asked = *record;
        record.CallTwice("the engine rates alike twice", [&](RateContext* context) {
            // An answer lays its points into the record; the same ones are asked for again.
            std::memcpy(context->OrigState, asked.OrigState, sizeof asked.OrigState);
            std::memcpy(context->OrigCity, asked.OrigCity, sizeof asked.OrigCity);
            std::memcpy(context->DestState, asked.DestState, sizeof asked.DestState);
            std::memcpy(context->DestCity, asked.DestCity, sizeof asked.DestCity);
            return RateAnew(context);
        });
        record.CheckRatedTexts();
    }
    Directory().Restore();
    return 0;
}
