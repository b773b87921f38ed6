#include "support/tariff_fixture.h"

#include <sys/stat.h>

#include <fstream>
#include <random>

namespace hundredweight {
namespace {

std::filesystem::path MakeTemporaryDirectory() {
    std::filesystem::path path;
    do {
        path = std::filesystem::temp_directory_path() /
               ("hundredweight-" + std::to_string(std::random_device()()));
    } while (!std::filesystem::create_directory(path));
    return path;
}

std::ptrdiff_t OpenDescriptors() {
    std::ptrdiff_t open = 0;
    struct stat status;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        if (fstat(descriptor, &status) == 0) ++open;
    }
    return open;
}

}  // namespace

std::string Padded(std::string_view text, std::size_t size, char filler) {
    std::string field(text);
    field.resize(size, filler);
    return field;
}

void Put(std::string& bytes, std::size_t offset, std::string_view text) {
    bytes.replace(offset, text.size(), text);
}

std::string BytesOf(const RateContext& context, Span span) {
    return {reinterpret_cast<const char*>(&context) + span.offset, span.size};
}

void Fill(RateContext& context, Span span, char filler) {
    memset(reinterpret_cast<char*>(&context) + span.offset, filler, span.size);
}

void ExpectAlikeOutside(const std::vector<Span>& fields, const RateContext& before,
                        const RateContext& after) {
    std::string expected = BytesOf(before, {0, sizeof before});
    for (const Span field : fields) Put(expected, field.offset, BytesOf(after, field));
    const std::string actual = BytesOf(after, {0, sizeof after});
    const auto differing = std::mismatch(actual.begin(), actual.end(), expected.begin()).first;
    EXPECT_EQ(differing, actual.end()) << "byte " << differing - actual.begin() << " was written";
}

TariffTest::TariffTest() : directory_(MakeTemporaryDirectory()), descriptors_(OpenDescriptors()) {
    PutText(context_.DataDir, directory_.string() + "/");
    PutText(context_.FileBase, "ABC");
}

TariffTest::~TariffTest() {
    CloseAllFiles(&context_);
    EXPECT_EQ(OpenDescriptors(), descriptors_);
    std::filesystem::remove_all(directory_);
}

void TariffTest::WriteFile(const std::string& name, std::string_view content) const {
    std::ofstream(directory_ / name, std::ios::binary) << content;
}

}  // namespace hundredweight
