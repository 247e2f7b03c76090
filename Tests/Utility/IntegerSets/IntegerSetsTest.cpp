#include "MemoryExt.h"
#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::Bytes, test_support::BytesIn, test_support::Hex, test_support::Stream, test_support::StreamOf;
using Values = std::vector<int>;
using Sizes = std::vector<unsigned long>;
__extension__ using Wide = unsigned __int128;  // for sums that cannot wrap

constexpr unsigned long kMiB = 1ul << 20;

// The values 1, 2 and 3, each up to twice: a different ascending vector for every number below 27.
Values Sorted(unsigned number) {
    Values values(number % 3, 1);
    values.insert(values.end(), number / 3 % 3, 2);
    values.insert(values.end(), number / 9, 3);
    return values;
}

TEST(SetOperations, AgreeWithTheAlgorithmsOfTheStandardLibrary) {
    CIntArray pool;
    _tIntArray list;
    for (unsigned i = 0; i < 27 * 27; ++i) {
        const Values a = Sorted(i / 27), b = Sorted(i % 27);
        SCOPED_TRACE(testing::PrintToString(a) + testing::PrintToString(b));
        pool.GenerateIntList(a, list);
        for (int value = 0; value <= 4; ++value) {
            const auto bound = std::lower_bound(a.begin(), a.end(), value);
            EXPECT_EQ(LocateIndex(value, a), bound == a.end() ? -1 : bound - a.begin());
            EXPECT_EQ(IsExists(value, a), std::count(a.begin(), a.end(), value) > 0);
            EXPECT_EQ(pool.IsExist(value, list), IsExists(value, a));
        }
        Values below, remaining, edited = a, common = {77}, expected = {77};
        for (const int element : b) below.push_back(element - 10);
        std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(expected));
        EXPECT_EQ(Intersection(a, below, -10, common), expected.size());
        EXPECT_EQ(common, expected);
        std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(remaining));
        EXPECT_EQ(Not(edited, b), remaining.size() < a.size());
        EXPECT_EQ(edited, remaining);
        const int length = static_cast<int>(b.size());
        EXPECT_EQ(pool.Or(b.data(), length, list), expected.size() > 1);
        EXPECT_EQ(pool.And(b.data(), length, list), std::includes(b.begin(), b.end(), a.begin(), a.end()));
    }
}

// Long lists of every pair of lengths that one way to intersect or another is for; with equal elements and without.
TEST(IntegerSets, IntersectionAgreesWithTheAlgorithmForAnyLengths) {
    std::mt19937 random(1);
    const auto sorted = [&](std::size_t count, unsigned limit, bool different) {
        Values values(count);
        const auto centre = static_cast<std::int64_t>(limit / 2);
        for (int& value : values) value = static_cast<int>(static_cast<std::int64_t>(random() % limit) - centre);
        std::sort(values.begin(), values.end());
        if (different) values.erase(std::unique(values.begin(), values.end()), values.end());
        return values;
    };
    for (int round = 0; round < 2000; ++round) {
        const std::size_t few = random() % 70, ratio = 1u << random() % 8;
        const unsigned limit =
            round % 5 == 0 ? 0xFFFFFFFF : static_cast<unsigned>(few * ratio * (1 + random() % 3) + 1);
        Values a = sorted(few, limit, round % 2 == 0), b = sorted(few * ratio, limit, round % 3 == 0), common, expected;
        if (round % 7 < 3) std::swap(a, b);
        const int offset = round % 4 == 0 ? 0 : static_cast<int>(random() - 0x80000000) >> random() % 32;
        std::vector<long> wide_a, wide_b(b.begin(), b.end()), wide;
        for (const int value : a) wide_a.push_back(static_cast<long>(value) + offset);
        // Half of the sums are put into b, where they fit.
        for (const long value : wide_a)
            if (random() % 2 == 0 && value == static_cast<int>(value)) wide_b.push_back(value);
        std::sort(wide_b.begin(), wide_b.end());
        b.assign(wide_b.begin(), wide_b.end());
        std::set_intersection(wide_a.begin(), wide_a.end(), wide_b.begin(), wide_b.end(), std::back_inserter(wide));
        for (const long value : wide) expected.push_back(static_cast<int>(value - offset));
        EXPECT_EQ(Intersection(a, b, offset, common), expected.size());
        ASSERT_EQ(common, expected) << "round " << round;
    }
}

// The rule as it reads, for one run.
bool MayBeMerged(const Sizes& run, bool balance) {
    Wide sum = run[0];
    for (auto next = run.begin() + 1; next != run.end(); sum += *next++) {
        const unsigned long smallest = *std::min_element(run.begin(), next);
        if (*next >= 1024 * kMiB || sum + *next >= 1024 * kMiB) return false;
        if (balance && *next >= 20 * kMiB && !IsBalancedValue(*next, smallest) &&
            !IsBalancedValue(*next, static_cast<unsigned long>(sum)))
            return false;
    }
    return true;
}

TEST(MergeSelect, FindsTheFirstOfTheLongestRuns) {
    // clang-format off
    const Sizes edges = {
        0, 1, 9, 10, 109, 2 * kMiB, 2 * kMiB + 1, 20 * kMiB - 1, 20 * kMiB, 90 * kMiB, 210 * kMiB,
        1024 * kMiB - 1, 1024 * kMiB, ULONG_MAX / 10, ULONG_MAX};
    // clang-format on
    std::mt19937 random(5);
    for (int row = 0; row < 80'000; ++row) {
        Sizes sizes(2 + random() % 8);
        for (unsigned long& size : sizes) size = edges[random() % (row % 4 < 2 ? edges.size() : 11)];
        const bool balanced = sizes[0] >= sizes[1] / 10 && sizes[0] <= Wide{sizes[1]} * 10;
        EXPECT_EQ(IsBalancedValue(sizes[0], sizes[1]), balanced) << sizes[0] << ' ' << sizes[1];
        std::size_t start = 0, length = sizes.size();
        while (!MayBeMerged({&sizes[start], &sizes[start] + length}, row % 2 == 0))
            if (++start + length > sizes.size()) start = 0, --length;
        int count = -5;
        ASSERT_EQ(MergeSelect(sizes, count, row % 2 == 0), start) << testing::PrintToString(sizes);
        ASSERT_EQ(count, length) << testing::PrintToString(sizes);
    }
    // Comparing every start with every end would take hours here.
    Sizes many(2'000'000, 1);
    many[1'000'001] = 50 * kMiB;
    int count;
    EXPECT_EQ(MergeSelect(many, count, true), 0);
    EXPECT_EQ(count, 1'000'001);
}

TEST(IntArray, GrowsByAMarginAndStandsInAFile) {
    CIntArray pool, other;
    _tIntArray range;
    Values list = {9};
    pool.GenerateIntList({1, -2, 0x12345678}, range);
    const Stream file = StreamOf();
    EXPECT_EQ(pool.Write(file.get()), 3u);
    EXPECT_EQ(Hex(BytesIn(file)), "03 00 00 00 01 00 00 00 FE FF FF FF 78 56 34 12");
    EXPECT_EQ(pool.GenerateIntList(Values(1500, 7), range), 1500);
    EXPECT_EQ(pool.m_nCapacity, 2527);
    EXPECT_EQ(pool.Write(file.get()), 1503u);
    std::rewind(file.get());
    EXPECT_EQ(other.Read(file.get()), 1503u);
    EXPECT_EQ(other.m_nCapacity, 1503);
    EXPECT_EQ(other.GetVector({1, 1505}, list), 1504u);
    EXPECT_EQ(other.GenerateIntList({-1, -1}, range), 2);
    EXPECT_EQ(list, Values(other.m_pData + 1, other.m_pData + 1505));
    for (const int start : {INT_MIN, -3, 1505, INT_MAX - 3}) {
        const _tIntArray outside = {start, start + 3};
        EXPECT_FALSE(other.Or(&start, 1, outside) || other.And(&start, 1, outside) || other.IsExist(-1, outside));
    }
    other = std::move(pool);
    EXPECT_EQ(other.GetValue(2), 0x12345678);
    EXPECT_EQ(pool.GenerateIntList({5}, range), 1);
    EXPECT_EQ(pool.m_nCapacity, 1025);
    pool.m_nCount = pool.m_nCapacity = INT_MAX - 5;  // as after reading eight gigabytes
    EXPECT_EQ(pool.GenerateIntList(Values(10), range), 0);
    pool.m_nCount = 1;
}

TEST(IntArray, ReadsDamagedFiles) {
    const std::tuple<std::string, std::size_t, Values> rows[] = {
        {Bytes("\3\0\0"), 0, {}},
        {Bytes("\3\0\0\0\5\0\0\0\6\1"), 1, {5, 0x106, 0}},
        {Bytes("\xFF\xFF\xFF\xFF\5\0\0\0"), 0, {}},
        {Bytes("\0\xCA\x9A\x3B\5\0\0\0"), 0, {}}};  // a billion
    for (const auto& [bytes, result, values] : rows) {
        CIntArray pool;
        EXPECT_EQ(pool.Read(StreamOf(bytes).get()), result) << Hex(bytes);
        EXPECT_EQ(Values(pool.m_pData, pool.m_pData + pool.m_nCount), values);
        EXPECT_EQ(pool.m_nCapacity, pool.m_nCount);
    }
}

}  // namespace
