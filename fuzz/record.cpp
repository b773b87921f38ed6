// Whatever a host may write to the fields that are its own, and any function called on it.
#include "calls.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

DataDirectory& Directory() {
    static DataDirectory directory([] {
        samples::FileContents files = samples::TariffSetFiles({});
        files.merge(PartnerFiles());
        files.merge(samples::ProfileFiles());
        return files;
    }());
    return directory;
}

}  // namespace

const Parts& fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all = HostFieldParts();
        // Calls before and after the fields are written, half as often as fields.
        for (std::size_t i = all.size() / 4; i > 0; --i) {
            all.insert(all.end(), {{"first", ""}, {"calls", ""}});
        }
        return all;
    }();
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const Parts parts = ReadParts(data, size);
    {
        Record record(Directory());
        MakeCalls(record, ContentOf(parts, "first"));
        record.PutFields(parts);
        MakeCalls(record, ContentOf(parts, "calls"));
    }
    Directory().Restore();
    return 0;
}
