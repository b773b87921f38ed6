#include "data_sets.h"

#include "reference/samples/sample_data.h"

namespace hundredweight::bench {
namespace {

std::filesystem::path WriteOnce(const char* directory, samples::Size size) {
    if (!std::filesystem::exists(directory)) samples::WriteSampleData(directory, size);
    return directory;
}

}  // namespace

std::filesystem::path SampleSet() {
    return WriteOnce("sample", samples::Size::kSample);
}

std::filesystem::path CarrierSet() {
    return WriteOnce("carrier", samples::Size::kCarrier);
}

}  // namespace hundredweight::bench
