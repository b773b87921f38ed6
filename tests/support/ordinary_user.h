// Somebody who may not do everything.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace hundredweight {

/// A user who may do what permissions say, also when the tests are run by one who may do all.
struct OrdinaryUser {
    explicit OrdinaryUser(bool ordinary = true) : root_(ordinary && geteuid() == 0) {
        EXPECT_EQ(root_ ? seteuid(65534) : 0, 0);
    }
    ~OrdinaryUser() { EXPECT_EQ(root_ ? seteuid(0) : 0, 0); }
    const bool root_;
};

}  // namespace hundredweight
