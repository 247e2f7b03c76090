#include "Utility/IntegerSets/MergeSelect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <utility>

namespace {

using Sizes = std::vector<unsigned long>;
using Found = std::pair<int, int>;             // start and length
__extension__ using Wide = unsigned __int128;  // for sums that cannot wrap

constexpr unsigned long kMiB = 1ul << 20;
// The first kMergeable of them are such as often go together.
// clang-format off
const Sizes kEdges = {
    0, 1, 9, 10, 109, 2 * kMiB, 2 * kMiB + 1, 20 * kMiB - 1, 20 * kMiB, 90 * kMiB, 210 * kMiB,
    1024 * kMiB - 1, 1024 * kMiB, ULONG_MAX / 10, ULONG_MAX};
// clang-format on
constexpr std::size_t kMergeable = 11;

bool Balanced(Wide value, Wide reference) {
    return value >= reference / 10 && value <= reference * 10;
}

// The rule as it reads, for one run.
bool MayBeMerged(const Sizes& run, bool balance) {
    Wide sum = run[0];
    for (auto next = run.begin() + 1; next != run.end(); sum += *next++) {
        if (*next >= 1024 * kMiB || sum + *next >= 1024 * kMiB) return false;
        const unsigned long smallest = *std::min_element(run.begin(), next);
        if (balance && *next >= 20 * kMiB && !Balanced(*next, smallest) && !Balanced(*next, sum))
            return false;
    }
    return true;
}

Found LongestRun(const Sizes& sizes, bool balance) {
    const int n = static_cast<int>(sizes.size());
    for (int length = n; length > 0 && n > 1; --length) {
        for (int start = 0; start + length <= n; ++start) {
            const auto first = sizes.begin() + start;
            if (MayBeMerged(Sizes(first, first + length), balance)) return {start, length};
        }
    }
    return {0, 0};
}

Found Select(const Sizes& sizes, bool balance) {
    int count = -5;
    const int start = MergeSelect(sizes, count, balance);
    return {start, count};
}

TEST(MergeSelect, FindsTheFirstOfTheLongestRuns) {
    for (const unsigned long value : kEdges) {
        for (const unsigned long reference : kEdges) {
            EXPECT_EQ(IsBalancedValue(value, reference), Balanced(value, reference))
                << value << ' ' << reference;
        }
    }
    std::mt19937 random(5);
    for (int row = 0; row < 40'000; ++row) {
        Sizes sizes(random() % 10);
        for (unsigned long& size : sizes)
            size = kEdges[random() % (row % 2 == 0 ? kEdges.size() : kMergeable)];
        for (const bool balance : {false, true}) {
            ASSERT_EQ(Select(sizes, balance), LongestRun(sizes, balance)) << testing::PrintToString(sizes);
        }
    }
}

TEST(MergeSelect, TakesLinearTime) {
    // Comparing every start with every end would take hours.
    Sizes sizes(2'000'000, 1);
    sizes[1'000'000] = 50 * kMiB;
    EXPECT_EQ(Select(sizes, true), Found(0, 1'000'000));
    sizes[1'000'001] = ULONG_MAX;
    EXPECT_EQ(Select(sizes, false), Found(0, 1'000'001));
}

}  // namespace
