// What a build doubts of a tariff set that it can build.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reference/samples/carrier_files.h"
#include "reference/samples/file_contents.h"
#include "reference/samples/profile_file.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

Files SampleData() {
    Files data = hundredweight::samples::TariffSetFiles({});
    data.merge(hundredweight::samples::ProfileFiles());
    data["Northeast.ZP6"] = data["SAMPLE.ZP6"];
    return data;
}

const Files& SampleFolder() {
    static const Files folder = ExportSet(SampleData(), "SAMPLE").files;
    return folder;
}

std::vector<std::string> DoubtsOf(const Files& folder) {
    std::vector<std::string> told;
    for (const Finding& finding : BuildSet(folder).findings.list()) {
        told.push_back(FindingText(finding));
    }
    return told;
}

TEST(SetChecksTest, SampleIsAsItShouldBe) {
    EXPECT_EQ(DoubtsOf(SampleFolder()), std::vector<std::string>());
}

}  // namespace
}  // namespace cwt
