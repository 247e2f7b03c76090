#include "Utility/CompactStorage/FilterCells.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>
#include <ctime>
#include <memory>

#include "Support/TestSupport.h"

namespace {

using test_support::Bytes;
using test_support::Hex;

TEST(FilterCells, AreReadAndWrittenByTypeCode) {
    const struct {
        int type;
        const char* text;
        std::string bytes;  // on a machine with the low byte first
        const char* printed;
    } rows[] = {
        {2, "\"42", Bytes("\x2A\0\0\0\0\0\0\0"), "42"},
        {2, "\"\"42", Bytes("\0\0\0\0\0\0\0\0"), "0"},
        {2, " -1x", Bytes("\xFF\xFF\xFF\xFF\0\0\0\0"), "-1"},
        {6, "4294967297", Bytes("\x01\0\0\0\0\0\0\0"), "1"},
        {-9, "99999999999999999999", Bytes("\xFF\xFF\xFF\xFF\0\0\0\0"), "-1"},
        {3, "-9223372036854775808", Bytes("\0\0\0\0\0\0\0\x80"), "-9223372036854775808"},
        {3, "99999999999999999999", Bytes("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F"), "9223372036854775807"},
        {3, "", Bytes("\0\0\0\0\0\0\0\0"), "0"},
        {4, "\"", Bytes("\0\0\0\0\0\0\0\0"), ""},
        {5, "\"-1.5e1x", Bytes("\0\0\x70\xC1\0\0\0\0"), "-15.000000"},
        {5, "none", Bytes("\0\0\0\0\0\0\0\0"), "0.000000"},
        {7, "0.1", Bytes("\x9A\x99\x99\x99\x99\x99\xB9\x3F"), "0.100000"},
        {7, "infinite", Bytes("\0\0\0\0\0\0\0\0"), "0.000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.type << ' ' << row.text);
        double cell = -1;
        EXPECT_EQ(str2filter_data(row.text, &cell, row.type), &cell);
        char bytes[sizeof cell];
        std::memcpy(bytes, &cell, sizeof cell);
        EXPECT_EQ(Hex(std::string(bytes, sizeof bytes)), Hex(row.bytes));
        char printed[30];
        EXPECT_EQ(filter_data2str(&cell, printed, row.type), printed);
        EXPECT_STREQ(printed, row.printed);
    }
    double cell = -DBL_MAX;
    const std::unique_ptr<char[]> printed(new char[318]);  // to the byte what is needed
    EXPECT_EQ(std::string(filter_data2str(&cell, printed.get(), 7)), std::to_string(-DBL_MAX));
    std::tm time{};
    time.tm_year = 114;
    time.tm_mon = 2;
    time.tm_mday = 5;
    time.tm_hour = 8;
    const std::time_t expected = std::mktime(&time);
    EXPECT_EQ(std::memcmp(str2filter_data("2014-03-05 08:00:00", &cell, 4), &expected, sizeof cell), 0);
    EXPECT_STREQ(filter_data2str(&cell, printed.get(), 4), "2014/03/05 08:00:00");
}

TEST(FilterCells, AreCompared) {
    const struct {
        int type;
        const char *a, *b;
        int cells, texts;
    } rows[] = {
        {2, "10", "9", 1, 1},         {2, "-1", "1", -1, -1},
        {3, "4294967296", "1", 1, 1}, {4, "2014-1-1", "2013/12/31", 1, 1},
        {1, "10", "9", 1, -1},        {6, "007", "7", 0, -1},
        {5, "nan", "nan", 1, 1},      {5, "2.5", "10", -1, -1},
        {7, "1e1", "10", 0, 0},       {7, "-0", "0", 0, 0},
        {7, "1", "nan", 1, 1},        {4, "2014/1/1", "2014-1-1", 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.type << ' ' << row.a << ' ' << row.b);
        double cells[3];
        str2filter_data("77", &cells[0], row.type);
        str2filter_data(row.b, &cells[1], row.type);
        str2filter_data(row.a, &cells[2], row.type);
        EXPECT_EQ(filter_data_cmp(&cells[2], &cells[1], row.type), row.cells);
        const int order = filter_data_cmp(row.a, row.b, row.type);
        EXPECT_EQ((order > 0) - (order < 0), row.texts);
        EXPECT_EQ(IsExists(&cells[2], cells, 2, row.type, 0), row.cells == 0);
        EXPECT_FALSE(IsExists(&cells[2], cells, 1, row.type, 0));
    }
}

}  // namespace
