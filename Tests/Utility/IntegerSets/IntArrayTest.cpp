#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

#include "MemoryExt.h"
#include "Support/StreamSupport.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Bytes;
using test_support::BytesIn;
using test_support::Hex;
using test_support::Stream;
using test_support::StreamOf;
using Values = std::vector<int>;

static_assert(!std::is_copy_constructible_v<CIntArray> && !std::is_copy_assignable_v<CIntArray>);

_tIntArray Append(CIntArray& pool, const Values& values) {
    _tIntArray range;
    const int appended = pool.GenerateIntList(values, range);
    EXPECT_EQ(appended, range.nEnd - range.nStart);
    return range;
}

Values AllValues(const CIntArray& pool) {
    return Values(pool.m_pData, pool.m_pData + pool.m_nCount);
}

TEST(IntArray, GrowsByAMargin) {
    CIntArray pool;
    EXPECT_EQ(pool.GetValue(0), -1);
    EXPECT_EQ(Append(pool, Values(1024, 7)).nEnd, 1024);
    EXPECT_EQ(pool.m_nCapacity, 1024);
    const _tIntArray range = Append(pool, {3, INT_MIN, 3});
    EXPECT_EQ(range.nStart, 1024);
    EXPECT_EQ(pool.m_nCapacity, 2051);
    Values list = {1};
    EXPECT_EQ(pool.GetVector(range, list), 3u);
    EXPECT_EQ(list, Values({3, INT_MIN, 3}));
    EXPECT_EQ(pool.GetValue(1023), 7);
}

TEST(IntArray, HoldsNoValuesOutsideThePool) {
    CIntArray pool;
    Append(pool, {1, 2});
    const int array[] = {-1, 0, 1, 2};
    Values list;
    for (const int start : {INT_MIN, -3, 2, INT_MAX - 3}) {
        const _tIntArray outside = {start, start + 3};
        EXPECT_EQ(pool.GetVector(outside, list), 3u);
        EXPECT_EQ(list, Values(3, -1));
        EXPECT_FALSE(pool.Or(array, 4, outside) || pool.And(array, 4, outside) || pool.IsExist(-1, outside));
    }
    EXPECT_TRUE(pool.Or(array, 4, {-9, INT_MAX}));
    EXPECT_FALSE(pool.And(array, 4, {0, 3}));
    EXPECT_TRUE(pool.And(array, 4, {2, 0}));
}

TEST(IntArray, StandsInAFileLowByteFirst) {
    CIntArray pool;
    const Stream file = StreamOf();
    EXPECT_EQ(pool.Write(file.get()), 0u);
    Append(pool, {1, -2, 0x12345678});
    EXPECT_EQ(pool.Write(file.get()), 3u);
    EXPECT_EQ(Hex(BytesIn(file)), "00 00 00 00 03 00 00 00 01 00 00 00 FE FF FF FF 78 56 34 12");
    EXPECT_EQ(pool.Read(file.get()), 0u);
    EXPECT_EQ(AllValues(pool), Values());
    EXPECT_EQ(pool.Read(file.get()), 3u);
    EXPECT_EQ(AllValues(pool), Values({1, -2, 0x12345678}));
    const Stream large = StreamOf();  // of more than one piece, in and out
    for (int i = 0; i < 700; ++i) Append(pool, Values(1000, i * 3'000'001));
    EXPECT_EQ(pool.Write(large.get()), 700'003u);
    std::rewind(large.get());
    CIntArray copy;
    EXPECT_EQ(copy.Read(large.get()), 700'003u);
    EXPECT_EQ(AllValues(copy), AllValues(pool));
    EXPECT_LT(pool.Write(Stream(std::fopen("/dev/full", "wb")).get()), 700'003u);
}

TEST(IntArray, ReadsDamagedFiles) {
    const struct {
        std::string bytes;
        std::size_t result;
        Values values;
    } rows[] = {
        {"", 0, {}},
        {Bytes("\x02\0\0"), 0, {}},
        {Bytes("\x03\0\0\0\x05\0\0\0\x06\x01"), 1, {5, 0x106, 0}},
        {Bytes("\xFF\xFF\xFF\xFF\x05\0\0\0"), 0, {}},
        {Bytes("\0\xCA\x9A\x3B\x05\0\0\0\x06\0\0\0\x07\0\0\0\x08\0\0\0"), 0, {}},  // a billion
        {Bytes("\xFF\xFF\xFF\x7F\x05\0\0\0"), 0, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Hex(row.bytes));
        CIntArray pool;
        Append(pool, {9, 9, 9, 9});
        EXPECT_EQ(pool.Read(StreamOf(row.bytes).get()), row.result);
        EXPECT_EQ(AllValues(pool), row.values);
        EXPECT_EQ(pool.m_nCapacity, pool.m_nCount);
        EXPECT_EQ(pool.GetValue(Append(pool, {1}).nStart), 1);
    }
}

TEST(IntArray, MovesItsBlock) {
    CIntArray pool;
    Append(pool, {1, 2});
    CIntArray moved(std::move(pool));
    EXPECT_EQ(AllValues(moved), Values({1, 2}));
    EXPECT_EQ(Append(pool, {3}).nEnd, 1);
    moved = std::move(pool);
    EXPECT_EQ(AllValues(moved), Values({3}));
    EXPECT_EQ(pool.m_pData, nullptr);
    EXPECT_EQ(pool.m_nCount + pool.m_nCapacity, 0);
}

}  // namespace
