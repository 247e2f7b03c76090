#include <cfloat>

#include "MemoryExt.h"
#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::Bytes, test_support::BytesIn, test_support::Hex, test_support::Stream, test_support::StreamOf;

TEST(StaticStr, GrowsByAMarginAndStandsInAFile) {
    CStaticStr pool, copy;
    EXPECT_EQ(pool.AddString("ab"), 0);
    EXPECT_EQ(pool.AddString("c"), 3);
    const Stream file = StreamOf();
    pool.Write(file.get());
    EXPECT_EQ(Hex(BytesIn(file)), "05 00 00 00 00 00 00 00 61 62 00 63 00");
    EXPECT_EQ(pool.AddString(std::string(10'234, 'x').c_str()), 5);
    EXPECT_EQ(pool.m_nCapacity, 10'240u);
    EXPECT_EQ(pool.AddString(pool.GetStr(10'237)), 10'240);  // a text in the block that moves
    EXPECT_EQ(pool.m_nCapacity, 10'240u + 2 + 1'024);
    pool.AddString(std::string(3'000'000, 'y').c_str());
    pool.Write(file.get());
    std::rewind(file.get());
    copy.Read(file.get());
    EXPECT_EQ(copy.m_nCapacity, 3'010'244u + 1'024);
    EXPECT_EQ(copy.GetStr(5) + std::string(copy.GetStr(10'240)), std::string(10'236, 'x'));
    EXPECT_EQ(std::string(copy.m_pBuf, copy.m_nSize), std::string(pool.m_pBuf, pool.m_nSize));
    copy = std::move(pool);
    EXPECT_EQ(pool.AddString("second"), 0);
    EXPECT_STREQ(copy.GetStr(3), "c");
}

TEST(StaticStr, ReadsDamagedFiles) {
    const std::string full(10'240, 'x');  // as much as the block has room for
    // clang-format off
    const std::pair<std::string, std::string> rows[] = {
        {Bytes("\2\0\0\0\0\0\0"), Bytes("held\0")}, {Bytes("\3\0\0\0\0\0\0\0open"), "ope"},
        {Bytes("\x8\0\0\0\0\0\0\0A"), Bytes("Aeld\0\0\0\0")}, {Bytes("\0\x28\0\0\0\0\0\0") + full, full},
        {Bytes("\2\x28\0\0\0\0\0\0A"), "Aeld" + std::string(10'238, '\0')}, {Bytes("\0\0\0\x40\0\0\0\0ABC"), ""},
        {std::string(8, '\xFF') + "ABC", ""}};
    // clang-format on
    for (const auto& [bytes, held] : rows) {
        CStaticStr pool;
        pool.AddString("held");
        pool.Read(StreamOf(bytes).get());
        EXPECT_EQ(std::string(pool.m_pBuf, pool.m_nSize), held) << Hex(bytes.substr(0, 16));
        EXPECT_EQ(std::string(pool.GetStr(0)), held.c_str());  // no string runs on past the pool
    }
}

TEST(Serialisation, CodesIntegersInOneToFourBytes) {
    // clang-format off
    const std::pair<int, const char*> rows[] = {
        {0, "00"}, {63, "3F"}, {64, "40 40"}, {16'383, "7F FF"}, {16'384, "80 40 00"}, {0x123456, "92 34 56"},
        {4'194'303, "BF FF FF"}, {4'194'304, "C0 40 00 00"}, {0x12345678, "D2 34 56 78"},
        {(1 << 30) - 1, "FF FF FF FF"}, {1 << 30, ""}, {-1, ""}, {INT_MIN, ""}};
    // clang-format on
    for (const auto& [value, code] : rows) {
        unsigned char bytes[4];
        const int size = int_compress(value, bytes);
        EXPECT_EQ(Hex(std::string(bytes, bytes + size)), code) << value;
        int decoded;
        EXPECT_TRUE(size == 0 || (int_uncompress(bytes, &decoded) == size && decoded == value)) << value;
    }
}

TEST(Serialisation, PutsStringsBehindTheirLengthAndIntegersInBuffers) {
    const Stream file = StreamOf();
    const std::string long_text(10'000, 'z');
    for (const std::string& text : {std::string("abcd"), Bytes("x\0y") + long_text, long_text})
        EXPECT_EQ(tstring_save(text, file.get()), text.size());
    const std::string bytes = BytesIn(file) + Bytes("\xFF\xFF\xFF\xFF") + "short";
    EXPECT_EQ(Hex(bytes.substr(0, 16)), "04 00 00 00 61 62 63 64 13 27 00 00 78 00 79 7A");
    const Stream damaged = StreamOf(bytes);
    for (const char* const expected : {"abcd", "x", long_text.c_str(), "short", ""}) {
        std::string text = "before";
        tstring_load(text, damaged.get());
        EXPECT_EQ(text, expected);
    }
    char* buffer = nullptr;
    int used = 0, capacity = 0;
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, 0x01020304, true), 4);
    while (used < 1016) WriteBuf(&buffer, used, capacity, 0x01020304, false);
    EXPECT_EQ(capacity, 1024);
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, -2, true), 1020);
    EXPECT_EQ(capacity, 2040);
    EXPECT_EQ(Hex(std::string(buffer, 8) + std::string(buffer + 1016, 4)), "01 02 03 04 04 03 02 01 FF FF FF FE");
    std::free(buffer);
}

TEST(FilterCells, AreReadAndWrittenByTypeCode) {
    // The values' bytes, low byte first.
    // clang-format off
    const std::tuple<int, const char*, const char*, const char*> rows[] = {
        {2, "\"42", "2A 00 00 00 00 00 00 00", "42"}, {2, "\"\"42", "00 00 00 00 00 00 00 00", "0"},
        {6, "4294967297", "01 00 00 00 00 00 00 00", "1"}, {-9, " -99999999999x", "01 18 89 B7 00 00 00 00", "-1215752191"},
        {3, "-9223372036854775808", "00 00 00 00 00 00 00 80", "-9223372036854775808"},
        {3, "99999999999999999999", "FF FF FF FF FF FF FF 7F", "9223372036854775807"},
        {4, "\"", "00 00 00 00 00 00 00 00", ""}, {5, "\"-1.5e1x", "00 00 70 C1 00 00 00 00", "-15.000000"},
        {7, "0.1", "9A 99 99 99 99 99 B9 3F", "0.100000"}, {7, "infinite", "00 00 00 00 00 00 00 00", "0.000000"}};
    // clang-format on
    double cell;
    char bytes[sizeof cell];
    const std::unique_ptr<char[]> printed(new char[318]);  // to the byte what a double needs
    for (const auto& [type, text, stored, shown] : rows) {
        std::memcpy(bytes, str2filter_data(text, &cell, type), sizeof cell);
        const bool is_long = type == 3 || type == 4 || type == 7;
        if (!test_support::kLowByteFirst) std::reverse(bytes, bytes + (is_long ? 8 : 4));
        EXPECT_EQ(Hex(std::string(bytes, sizeof bytes)), stored) << type << ' ' << text;
        EXPECT_STREQ(filter_data2str(&cell, printed.get(), type), shown) << type << ' ' << text;
    }
    cell = -DBL_MAX;
    EXPECT_EQ(filter_data2str(&cell, printed.get(), 7), std::to_string(-DBL_MAX));
    const std::time_t time = str2time("2014-3-5 8:9:10");
    EXPECT_EQ(std::memcmp(str2filter_data("2014-3-5 8:9:10", &cell, 4), &time, sizeof cell), 0);
    EXPECT_STREQ(filter_data2str(&cell, printed.get(), 4), "2014/03/05 08:09:10");
}

TEST(FilterCells, AreCompared) {
    // clang-format off
    const std::tuple<int, const char*, const char*, int, int> rows[] = {  // as cells, as texts
        {2, "10", "9", 1, 1}, {2, "-1", "1", -1, -1}, {1, "10", "9", 1, -1}, {6, "007", "7", 0, -1},
        {3, "4294967296", "1", 1, 1}, {4, "2014/1/1", "2014-1-1", 0, 1}, {4, "2014-1-1", "2013/12/31", 1, 1},
        {5, "nan", "nan", 1, 1}, {5, "2.5", "10", -1, -1}, {7, "1e1", "10", 0, 0}, {7, "-0", "0", 0, 0}};
    // clang-format on
    for (const auto& [type, a, b, as_cells, as_texts] : rows) {
        SCOPED_TRACE(testing::Message() << type << ' ' << a << ' ' << b);
        double cells[2] = {-1, -1}, cell;
        str2filter_data(a, &cells[1], type);
        EXPECT_EQ(filter_data_cmp(&cells[1], str2filter_data(b, &cell, type), type), as_cells);
        EXPECT_EQ(IsExists(&cell, cells, 2, type, 0), as_cells == 0);
        const int order = filter_data_cmp(a, b, type);
        EXPECT_EQ((order > 0) - (order < 0), as_texts);
    }
}

}  // namespace
