// A zero-filled record on a tariff set of its own, in a directory that is removed afterwards.
#pragma once

#include <gtest/gtest.h>
#include <hundredweight/exports.h>
#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "frame/text.h"

namespace hundredweight {

/// A text in a field of `size` bytes, filler behind it.
inline std::string Padded(std::string_view text, std::size_t size, char filler = '\0') {
    std::string field(text);
    field.resize(size, filler);
    return field;
}

/// Writes a text over part of a byte string.
inline void Put(std::string& bytes, std::size_t offset, std::string_view text) {
    bytes.replace(offset, text.size(), text);
}

/// Bytes of the record.
struct Span {
    std::size_t offset, size;
};
#define HWT_FIELD(member)                                                                 \
    Span {                                                                                \
        offsetof(RateContext, member), sizeof(static_cast<RateContext*>(nullptr)->member) \
    }
inline std::string BytesOf(const RateContext& context, Span span) {
    return {reinterpret_cast<const char*>(&context) + span.offset, span.size};
}
inline void Fill(RateContext& context, Span span, char filler) {
    memset(reinterpret_cast<char*>(&context) + span.offset, filler, span.size);
}

/// Expects that two records differ in the given fields at most.
inline void ExpectAlikeOutside(const std::vector<Span>& fields, const RateContext& before,
                               const RateContext& after) {
    std::string expected = BytesOf(before, {0, sizeof before});
    for (const Span field : fields) Put(expected, field.offset, BytesOf(after, field));
    const std::string actual = BytesOf(after, {0, sizeof after});
    const auto differing = std::mismatch(actual.begin(), actual.end(), expected.begin()).first;
    EXPECT_EQ(differing, actual.end()) << "byte " << differing - actual.begin() << " was written";
}

/// Expects at the end of its life that nothing but the given fields has been written.
struct Untouched {
    const RateContext& context;
    const std::vector<Span> fields;
    const std::unique_ptr<RateContext> before = std::make_unique<RateContext>(context);
    ~Untouched() { ExpectAlikeOutside(fields, *before, context); }
};

/// The text of a field up to its terminator.
template <std::size_t Size>
std::string Printed(const char (&field)[Size]) {
    return std::string(TerminatedText(field));
}

/// Base name ABC. After each test the record is closed, and no file may have stayed open.
class TariffTest : public ::testing::Test {
 protected:
    TariffTest() {
        PutText(context_.DataDir, directory_.string() + "/");
        PutText(context_.FileBase, "ABC");
    }
    ~TariffTest() override {
        CloseAllFiles(&context_);
        EXPECT_EQ(OpenDescriptors(), descriptors_);
        std::filesystem::remove_all(directory_);
    }

    void WriteFile(const std::string& name, std::string_view content) const {
        std::ofstream(directory_ / name, std::ios::binary) << content;
    }
    /// A call's result with the code that it left.
    using Outcome = std::pair<int32_t, int32_t>;
    Outcome With(int32_t result) const { return {result, +context_.ErrorCode}; }

    const std::filesystem::path directory_ = MakeTemporaryDirectory();
    const std::unique_ptr<RateContext> record_ = std::make_unique<RateContext>();
    RateContext& context_ = *record_;

 private:
    static std::filesystem::path MakeTemporaryDirectory() {
        std::filesystem::path path;
        do {
            path = std::filesystem::temp_directory_path() /
                   ("hundredweight-" + std::to_string(std::random_device()()));
        } while (!std::filesystem::create_directory(path));
        return path;
    }
    static int OpenDescriptors() {
        int open = 0;
        struct stat status;
        for (int descriptor = 0; descriptor < 256; ++descriptor)
            if (fstat(descriptor, &status) == 0) ++open;
        return open;
    }

    const int descriptors_ = OpenDescriptors();
};

}  // namespace hundredweight
