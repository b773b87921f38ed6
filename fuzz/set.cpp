// The load of a tariff set, a second load over the first, and the ZIP table of a profile.
#include "harness.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

/// Every file that a load looks for.
samples::FileContents AllFiles() {
    samples::SetOptions options;
    options.engine = false;
    options.mexico = true;
    samples::FileContents files = samples::TariffSetFiles(options);
    options.long_forms = false;
    options.fallbacks = true;
    files.merge(samples::TariffSetFiles(options));
    files["Default.ZP6"] = files.at("SAMPLE.ZP6");
    return files;
}

DataDirectory& Directory() {
    static DataDirectory directory(AllFiles());
    return directory;
}

int32_t Load(RateContext* context) {
    int32_t found = 0;
    return OpenAllFiles(context, &found) + 2 * found;
}

void ReadFurtherFiles(Record& record) {
    record.CallTwice("a discount file reads alike twice", ReadDiscFile);
    record.CallTwice("a COZ file reads alike twice", ReadCOZFile);
    record.CallTwice("a level file reads alike twice",
                     [](RateContext* context) { return OpenLevelFile(context, "SAMPLE.LVL"); });
    record.CallTwice("a profile's ZIP table reads alike twice", LoadProfileZP6);
}

}  // namespace

const Parts& fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all = Directory().FileParts();
        for (const char* field : {"UseEngine", "Profile", "DiscountOn", "FileBase"}) {
            all.push_back({field, "\1"});
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
        record.PutFields(parts);
        ReadDefFile(&*record);
        record.CallTwice("a set loads alike over itself", Load);
        record.CheckSetTexts();
        ReadFurtherFiles(record);
    }
    Directory().Restore();
    return 0;
}
