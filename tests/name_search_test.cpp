// Point codes and tariff names are found where a binary search of the files finds them, in tables
// of any size and order.
#include <algorithm>
#include <cstring>

#include "support/failing_system.h"
#include "support/tariff_fixture.h"
#include "tariff/name_tables.h"

namespace hundredweight {
namespace {

using Rows = std::vector<std::string>;

constexpr std::size_t kNotFound = SIZE_MAX;

/// Where a binary search ends. `where` is negative for a key below the row, 0 for one in it.
template <class Where>
std::size_t Search(const Rows& rows, Where where) {
    int low = 0;
    for (int high = static_cast<int>(rows.size()) - 1; low <= high;) {
        const auto middle = static_cast<std::size_t>((low + high) / 2);
        const int side = where(rows[middle]);
        if (side == 0) return middle;
        if (side < 0) high = static_cast<int>(middle) - 1;
        if (side > 0) low = static_cast<int>(middle) + 1;
    }
    return kNotFound;
}

enum class Order { kAscending, kAny };

class NameSearchTest : public TariffTest {
 protected:
    ~NameSearchTest() override { FreeNameTables(); }

    std::size_t Below(std::size_t limit) { return random_() % limit; }
    static std::string Code(std::size_t number) { return std::to_string(100000 + number); }

    /// Writes and loads the tables, without a layout for searches when `failing` allocations tell.
    void Load(const std::string& ranges, const std::string& pairs, int failing) {
        WriteFile("ABC.CBS", ranges);
        WriteFile("ABC.CMT", pairs);
        const FailingMemory memory(failing);
        ASSERT_EQ(ReadNameTables(context_), 1);
    }

    /// The number that the tariff name found is given.
    std::size_t Found(const std::string& origin, const std::string& destination) {
        PutText(context_.OrigZip, origin);
        PutText(context_.DestZip, destination);
        GetTolvexBse(&context_);
        if (GetTolvexTariffName(&context_) == 0) return kNotFound;
        return std::stoul(std::string(context_.TariffName, 8));
    }

    std::string AnyPostalCode(std::size_t different) {
        std::string code = Code(7 * Below(different));
        if (Below(4) == 0) code[5] = "\xE9Z 0"[Below(4)];
        return code;
    }

    /// Ranges of postal codes, some of which meet, lie in each other or are reversed.
    Rows AnyRanges(std::size_t count, Order order) {
        Rows ranges;
        for (std::size_t i = 0; i < count; ++i) {
            std::string low = AnyPostalCode(3 * count), high = AnyPostalCode(3 * count);
            if (Below(2) == 0) high = low;
            if (order == Order::kAscending && low > high) std::swap(low, high);
            ranges.push_back(low + high);
        }
        if (order == Order::kAscending) std::sort(ranges.begin(), ranges.end());
        return ranges;
    }

    void ExpectRangesFound(std::size_t count, Order order, int failing) {
        const Rows ranges = AnyRanges(count, order);
        std::string cbs, cmt;
        for (std::size_t i = 0; i < count; ++i) {
            cbs += ranges[i] + Code(i);
            cmt += Code(i) + Code(i) + "00" + Code(i).replace(0, 1, "0");
        }
        Load(cbs, cmt, failing);
        for (int i = 0; i < 300; ++i) {
            const std::string zip = AnyPostalCode(3 * count + 1).substr(0, 1 + Below(6));
            const std::size_t expected = Search(ranges, [&](const std::string& range) {
                const int low = std::memcmp(zip.data(), range.data(), zip.size());
                const int high = std::memcmp(zip.data(), range.data() + 6, zip.size());
                return low < 0 ? -1 : std::max(high, 0);
            });
            ASSERT_EQ(Found(zip, zip), expected) << zip << " of " << count;
            (expected == kNotFound ? missed_ : found_) += 1;
        }
    }

    void ExpectPairsFound(std::size_t count, Order order, int failing) {
        constexpr std::size_t kPoints = 30;
        std::string cbs;
        for (std::size_t i = 0; i < kPoints; ++i) cbs += Code(i) + Code(i) + Code(i);
        // A postal code that is not found leaves zeros for a point code.
        const auto code = [&](std::size_t i) {
            return i < kPoints ? Code(i) : std::string(6, '\0');
        };
        Rows pairs;
        for (std::size_t i = 0; i < count; ++i) {
            pairs.push_back(code(Below(kPoints + 1)) + code(Below(kPoints + 1)));
        }
        if (order == Order::kAscending) std::sort(pairs.begin(), pairs.end());
        std::string cmt;
        for (std::size_t i = 0; i < count; ++i) cmt += pairs[i] + "00" + Code(i).replace(0, 1, "0");
        Load(cbs, cmt, failing);
        for (int i = 0; i < 300; ++i) {
            const std::size_t origin = Below(kPoints + 1), destination = Below(kPoints + 1);
            const std::string key =
                code(origin) + (origin < kPoints ? code(destination) : code(kPoints));
            const std::size_t expected =
                Search(pairs, [&](const std::string& pair) { return key.compare(pair); });
            ASSERT_EQ(Found(Code(origin), Code(destination)), expected) << count;
            (expected == kNotFound ? missed_ : found_) += 1;
        }
    }

    int found_ = 0, missed_ = 0;

 private:
    std::mt19937 random_{1};
};

constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 15, 16, 17, 31, 100, 1023, 3000};
constexpr int kNoneFails = 0;

TEST_F(NameSearchTest, FindsTheRangeThatABinarySearchFinds) {
    constexpr int kLayoutFails = 2;
    for (const std::size_t count : kSizes) {
        for (const Order order : {Order::kAscending, Order::kAny}) {
            ExpectRangesFound(count, order, kNoneFails);
            if (count > 0) ExpectRangesFound(count, order, kLayoutFails);
        }
    }
    EXPECT_GT(std::min(found_, missed_), 1000);
}

TEST_F(NameSearchTest, FindsThePairThatABinarySearchFinds) {
    constexpr int kLayoutFails = 4;
    for (const std::size_t count : kSizes) {
        for (const Order order : {Order::kAscending, Order::kAny}) {
            ExpectPairsFound(count, order, kNoneFails);
            if (count > 0) ExpectPairsFound(count, order, kLayoutFails);
        }
    }
    EXPECT_GT(std::min(found_, missed_), 1000);
}

}  // namespace
}  // namespace hundredweight
