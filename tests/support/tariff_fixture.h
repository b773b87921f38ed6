// A zero-filled record on a tariff set of its own, in a directory that is removed afterwards.
#pragma once

#include <gtest/gtest.h>
#include <hundredweight/exports.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/text.h"

namespace hundredweight {

/// A text in a field of `size` bytes, filler behind it.
std::string Padded(std::string_view text, std::size_t size, char filler = '\0');
/// Writes a text over part of a byte string.
void Put(std::string& bytes, std::size_t offset, std::string_view text);

/// Bytes of the record.
struct Span {
    std::size_t offset, size;
};
#define HWT_FIELD(member)                                                                 \
    Span {                                                                                \
        offsetof(RateContext, member), sizeof(static_cast<RateContext*>(nullptr)->member) \
    }
std::string BytesOf(const RateContext& context, Span span);
void Fill(RateContext& context, Span span, char filler);
/// Expects that two records differ in the given fields at most.
void ExpectAlikeOutside(const std::vector<Span>& fields, const RateContext& before,
                        const RateContext& after);

/// The text of a field up to its terminator.
template <std::size_t Size>
std::string Printed(const char (&field)[Size]) {
    return std::string(TerminatedText(field));
}

/// Base name ABC. After each test the record is closed, and no file may have stayed open.
class TariffTest : public ::testing::Test {
 protected:
    TariffTest();
    ~TariffTest() override;

    void WriteFile(const std::string& name, std::string_view content) const;
    /// A call's result with the code that it left.
    using Outcome = std::pair<int32_t, int32_t>;
    Outcome With(int32_t result) const { return {result, +context_.ErrorCode}; }

    const std::filesystem::path directory_;
    const std::unique_ptr<RateContext> record_ = std::make_unique<RateContext>();
    RateContext& context_ = *record_;

 private:
    const std::ptrdiff_t descriptors_;
};

}  // namespace hundredweight
