#include <gtest/gtest.h>
#include <hundredweight/exports.h>

namespace hundredweight {

TEST(MessageBoxes, CountAsNotShownWithoutAHandler) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(warning("", "Caption", 106, nullptr), 0);
    EXPECT_EQ(question("Really", "Caption", 1, nullptr), 1);
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(shown.find("Invalid Weight.") < shown.find("Really")) << shown;
}

}  // namespace hundredweight
