#include "Utility/IntegerSets/SetOperations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "Utility/IntegerSets/IntArray.h"

namespace {

using Values = std::vector<int>;

// Every ascending vector of at most `length` elements over the values 1 to 3.
std::vector<Values> SortedVectors(std::size_t length) {
    std::vector<Values> all = {{}};
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (int next = all[i].empty() ? 1 : all[i].back(); next <= 3 && all[i].size() < length; ++next) {
            all.push_back(all[i]);
            all.back().push_back(next);
        }
    }
    return all;
}

TEST(SetOperations, AgreeWithTheAlgorithmsOfTheStandardLibrary) {
    CIntArray pool;
    for (const Values& a : SortedVectors(5)) {
        _tIntArray list;
        pool.GenerateIntList(a, list);
        for (int value = 0; value <= 4; ++value) {
            const auto bound = std::lower_bound(a.begin(), a.end(), value);
            EXPECT_EQ(LocateIndex(value, a), bound == a.end() ? -1 : bound - a.begin());
            EXPECT_EQ(IsExists(value, a), std::count(a.begin(), a.end(), value) > 0);
            EXPECT_EQ(pool.IsExist(value, list), IsExists(value, a));
        }
        for (const Values& b : SortedVectors(5)) {
            SCOPED_TRACE(testing::PrintToString(a) + testing::PrintToString(b));
            Values expected = {77};
            std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(expected));
            Values below;
            for (const int element : b) below.push_back(element - 10);
            Values common = {77};
            EXPECT_EQ(Intersection(a, below, -10, common), expected.size());
            EXPECT_EQ(common, expected);
            Values remaining;
            std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(remaining));
            Values edited = a;
            EXPECT_EQ(Not(edited, b), remaining.size() < a.size());
            EXPECT_EQ(edited, remaining);
            const int length = static_cast<int>(b.size());
            EXPECT_EQ(pool.Or(b.data(), length, list), expected.size() > 1);
            EXPECT_EQ(pool.And(b.data(), length, list),
                      std::includes(b.begin(), b.end(), a.begin(), a.end()));
        }
    }
}

TEST(SetOperations, LookFromTheFrontAndWithoutOverflow) {
    EXPECT_EQ(LocateIndex(4, {1, 9, 2, 4}), 1);
    Values common;
    EXPECT_EQ(Intersection({INT_MIN, INT_MAX}, {INT_MIN, INT_MAX}, 1, common), 0u);
}

}  // namespace
