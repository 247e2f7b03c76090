#include "Utility/CompactStorage/StaticStr.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "Support/StreamSupport.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Bytes;
using test_support::BytesIn;
using test_support::Hex;
using test_support::Stream;
using test_support::StreamOf;

static_assert(!std::is_copy_constructible_v<CStaticStr> && !std::is_copy_assignable_v<CStaticStr>);

std::string Held(const CStaticStr& pool) {
    return std::string(pool.m_pBuf, pool.m_nSize);
}

TEST(StaticStr, GrowsByAMargin) {
    CStaticStr pool;
    EXPECT_EQ(pool.AddString(std::string(10'238, 'x').c_str()), 0);
    EXPECT_EQ(pool.AddString(""), 10'239);
    EXPECT_EQ(pool.m_nSize, 10'240u);
    EXPECT_EQ(pool.m_nCapacity, 10'240u);
    EXPECT_EQ(pool.AddString(pool.GetStr(10'236)), 10'240);  // a text in the block that moves
    EXPECT_EQ(pool.m_nCapacity, 10'240u + 2 + 1'024);
    EXPECT_STREQ(pool.GetStr(10'240), "xx");
    EXPECT_STREQ(pool.GetStr(10'239), "");
}

TEST(StaticStr, StandsInAFileLowByteFirst) {
    CStaticStr pool;
    pool.AddString("ab");
    EXPECT_EQ(pool.AddString("c"), 3);
    const Stream file = StreamOf();
    pool.Write(file.get());
    EXPECT_EQ(Hex(BytesIn(file)), "05 00 00 00 00 00 00 00 61 62 00 63 00");
    CStaticStr copy;
    copy.Read(file.get());
    EXPECT_STREQ(copy.GetStr(3), "c");
    EXPECT_EQ(copy.m_nCapacity, 10'240u);
    pool.AddString(std::string(3'000'000, 'x').c_str());
    const Stream large = StreamOf();
    pool.Write(large.get());
    std::rewind(large.get());
    copy.Read(large.get());
    EXPECT_EQ(Held(copy), Held(pool));
    EXPECT_EQ(copy.m_nCapacity, 3'000'006u + 1'024);
    EXPECT_EQ(copy.AddString("d"), 3'000'006);
}

TEST(StaticStr, ReadsDamagedFiles) {
    const struct {
        std::string bytes, held;
    } rows[] = {
        {"", Bytes("held\0")},
        {Bytes("\x02\0\0\0\0\0\0"), Bytes("held\0")},
        {Bytes("\0\0\0\0\0\0\0\0"), ""},
        {Bytes("\x03\0\0\0\0\0\0\0open"), "ope"},
        {Bytes("\x08\0\0\0\0\0\0\0A"), Bytes("Aeld\0\0\0\0")},
        {Bytes("\0\x28\0\0\0\0\0\0") + std::string(10'240, 'x'),
         std::string(10'240, 'x')},  // fills the block
        {Bytes("\x02\x28\0\0\0\0\0\0A"), "Aeld" + std::string(10'238, '\0')},
        {Bytes("\0\0\0\x40\0\0\0\0ABC"), ""},
        {Bytes("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F") + "ABC", ""},
        {Bytes("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF") + "ABC", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Hex(row.bytes.substr(0, 16)));
        CStaticStr pool;
        pool.AddString("held");
        pool.Read(StreamOf(row.bytes).get());
        EXPECT_EQ(Held(pool), row.held);
        // No string runs on, neither past the end of the block nor into what was there before.
        EXPECT_EQ(std::string(pool.GetStr(0)), row.held.c_str());
        EXPECT_STREQ(pool.GetStr(pool.AddString("new")), "new");
    }
}

TEST(StaticStr, MovesItsBlock) {
    CStaticStr pool;
    pool.AddString("first");
    CStaticStr moved(std::move(pool));
    EXPECT_STREQ(moved.GetStr(0), "first");
    EXPECT_EQ(pool.AddString("second"), 0);
    moved = std::move(pool);
    EXPECT_STREQ(moved.GetStr(0), "second");
    EXPECT_EQ(pool.m_pBuf, nullptr);
    EXPECT_EQ(pool.m_nSize + pool.m_nCapacity, 0u);
}

}  // namespace
