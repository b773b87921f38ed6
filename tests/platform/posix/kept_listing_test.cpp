// A listing that serves for many shipments knows the names of today.
#include <chrono>
#include <thread>

#include "session/sources.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct KeptListingTest : ExplainedSamples {
    std::string Found() { return fs::path(listing_.Find("North East.ZP6")).filename().string(); }
    KeptListing listing_{directory_, ".ZP6"};
};

TEST_F(KeptListingTest, SeesNamesThatComeAndGo) {
    Write("NORTH EAST.TXT", "");
    Write("north east.zp6", "");
    fs::rename(directory_ / "north east.zp6", directory_ / "south.zp6");
    std::this_thread::sleep_for(4s);  // From here on the listing is kept.
    for (int look = 0; look < 2; ++look) EXPECT_EQ(Found(), "");
    fs::rename(directory_ / "south.zp6", directory_ / "north EAST.zp6");
    EXPECT_EQ(Found(), "north EAST.zp6");
    std::this_thread::sleep_for(4s);
    for (int look = 0; look < 2; ++look) EXPECT_EQ(Found(), "north EAST.zp6");
    fs::remove(directory_ / "north EAST.zp6");
    EXPECT_EQ(Found(), "");
}

}  // namespace
}  // namespace cwt
