// Where a body ends among the bytes of a connection, and the next request begins.
#include "server/http/body_frame.h"

#include <gtest/gtest.h>

#include <string>

namespace cwt {
namespace {

TEST(BodyFrame, ABodyEndsWhereItsFrameSays) {
    constexpr std::size_t kLongest = 100;
    enum End { kOpen, kWhole, kBroken, kTooLarge };
    const std::string most(kLongest, 'x'), half(kLongest / 2, 'x'), last = "0\r\n\r\n";
    const struct {
        std::string bytes;
        End end;
        std::size_t behind = 0;  ///< Bytes that belong to the next request.
    } cases[] = {
        {last, kWhole},
        {last + "GET", kWhole, 3},
        {"5\r\nabcde\r\n" + last + "\r\n", kWhole, 2},
        {"A\r\n0123456789\r\na\r\n\r\n0\r\n\r\n...\r\n" + last, kWhole},
        {"00000001\r\nx\r\n" + last, kWhole},
        {"64\r\n" + most + "\r\n" + last, kWhole},
        {"32\r\n" + half + "\r\n32\r\n" + half + "\r\n" + last, kWhole},
        {"5\r\nabcd", kOpen},
        {"5\r\nabcde\r\n0\r\n\r", kOpen},
        {"65\r\n", kTooLarge},
        {"32\r\n" + half + "\r\n33\r\n", kTooLarge},
        {"FFFFFFFF\r\n", kTooLarge},
        {"000000001\r\n", kBroken},
        {"\r\n", kBroken},
        {"g\r\n", kBroken},
        {"-1\r\n", kBroken},
        {"0x1\r\n", kBroken},
        {" 1\r\n", kBroken},
        {"1 \r\n", kBroken},
        {"1;a=b\r\n", kBroken},
        {"1\nx\n", kBroken},
        {"1\rx", kBroken},
        {"1\r\nxy\r\n", kBroken},
        {"1\r\nx\n", kBroken},
        {"1\r\nx\rx", kBroken},
        {"1\r\nx\r\n\r\n", kBroken},
        {"0\r\nA: b\r\n\r\n", kBroken},
        {"0\r\n\rx", kBroken},
        {"0\n\n", kBroken},
    };
    const auto expect = [](const BodyFrame& frame, End end) {
        EXPECT_EQ(frame.is_whole(), end == kWhole);
        EXPECT_EQ(frame.is_broken(), end == kBroken || end == kTooLarge);
        EXPECT_EQ(frame.is_too_large(), end == kTooLarge);
    };
    for (const auto& [bytes, end, behind] : cases) {
        SCOPED_TRACE(bytes);
        BodyFrame at_once(true, 0, kLongest), by_bytes(true, 0, kLongest);
        const std::size_t passed = at_once.Pass(bytes);
        expect(at_once, end);
        if (!at_once.is_broken()) {
            EXPECT_EQ(passed, bytes.size() - behind);
        }
        std::size_t count = 0;
        for (const char byte : bytes) count += by_bytes.Pass({&byte, 1});
        expect(by_bytes, end);
        EXPECT_EQ(count, passed);
    }
    BodyFrame frame(false, 5, kLongest), none(false, 0, kLongest);
    EXPECT_TRUE(none.is_whole());
    EXPECT_EQ(none.Pass("GET"), 0U);
    EXPECT_EQ(frame.Pass("abc"), 3U);
    expect(frame, kOpen);
    EXPECT_EQ(frame.Pass("deGET"), 2U);
    expect(frame, kWhole);
}

}  // namespace
}  // namespace cwt
