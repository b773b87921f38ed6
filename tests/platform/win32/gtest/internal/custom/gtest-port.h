// GoogleTest for a compiler whose standard library has no threads: every test runs in one, and
// nothing is waited for.
#pragma once

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

class Notification {
 public:
    void Notify() {}
    void WaitForNotification() {}
};

}  // namespace testing::internal
