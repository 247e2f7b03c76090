#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Conversion.h"

namespace {

using namespace test_support;
using Convert = unsigned long (*)(int, const char*, unsigned long, char*, unsigned long&);

std::string Wide(std::u32string_view text) {
    std::string bytes(4 * text.size(), '\0');
    std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

// What is written to a buffer of exactly the size needed, so that a sanitizer sees one byte too many. Input and output
// start at odd addresses.
std::string Written(Convert convert, int encoding, const std::string& input, unsigned long length, std::size_t size,
                    unsigned long& output_length, unsigned long& result) {
    const std::unique_ptr<char[]> in(new char[input.size() + 2]), out(new char[size + 1]);
    std::memcpy(in.get() + 1, input.c_str(), input.size() + 1);
    std::fill_n(out.get(), size + 1, 'x');
    result = convert(encoding, in.get() + 1, length, out.get() + 1, output_length);
    return std::string(out.get() + 1, size);
}

TEST(ConversionTest, WritesTheShapesAndNoMore) {
    const auto units = GBKBig5_ToUnicode;
    const auto unicode = CodeTrans_ToUnicode, utf8 = CodeTrans_ToUtf8, ansi = CodeTrans_ToAnsi;
    const struct {
        Convert convert;
        int encoding;
        std::string input;
        unsigned long length, capacity;  // as handed over
        std::string output;
        unsigned long result;  // and output length, except for UTF-8 to Unicode, which leaves that alone
    } kRows[] = {
        {units, 2, "\xD6\xD0z", 3, 4, Bytes("\x2D\x4Ez\0"), 4},
        {units, 3, "\xA4\xA4", 2, 9, "\x2D\x4E", 2},
        {units, 2, "xyz", 3, 5, Bytes("x\0y\0"), 4},
        {units, 2, "xyz", 3, 1, "", 0},
        {units, 2, "", 0, 10, "", 0},
        {units, 2, "\xD6\nz", 3, 10, Bytes("\xE4\x8Az\0"), 4},  // takes the line feed, gives the entry of D6 40
        {units, 2, Bytes("\xFF\xFF\0z"), 4, 10, Bytes("\0\0\0\0z\0"), 6},
        {units, 1, "z\xD6\xD0", 3, 10, Bytes("z\0\0\0"), 4},
        {unicode, 3, "z\xD6", 2, 10, Bytes("z\0\xFF\xFE"), 4},
        {unicode, 1, "z\xE4\xB8\xAD", 0, 77, Wide(U"z中") + Bytes("\0\0"), 8},
        {unicode, 1, "", 0, 77, Bytes("\0\0"), 0},
        {unicode, 8, Bytes("y\0z\0"), 4, 0, Bytes("y\0z\0\0"), 4},
        {unicode, 8, Bytes("y\0z\0"), 4, 3, Bytes("y\0z\0"), 3},
        {unicode, 5, "xyz", 3, 10, "", 0},
        {unicode, 0, "xyz", 3, 10, Bytes("x\0y\0z\0"), 6},
        {unicode, 0, Bytes("\xFF\xFEz\0"), 4, 0, Bytes("\xFF\xFEz\0\0"), 4},
        {utf8, 1, "0123456789", 10, 4, Bytes("0123\0"), 4},
        {utf8, 1, "0123456789", 10, 0, Bytes("0123456789\0"), 10},
        {utf8, 2, "\xD6\xD0z", 0, 0, Bytes("\xE4\xB8\xADz\0"), 4},
        {utf8, 2, "\xD6\xD0z", 0, 2, Bytes("\xE4\xB8\0"), 2},
        {utf8, 3, "\xD6\xD0z", 0, 0, Bytes("\xE4\xB8\xADz\0"), 4},  // Big5 is read as GBK
        {utf8, 8, Wide(U"中\U0001F600z"), 3, 0, Bytes("\xE4\xB8\xADz\0"), 4},
        {utf8, 8, Wide(U"中中中"), 3, 2, Bytes("\xE4\xB8\xAD\xE4\xB8\xAD\0"), 6},  // limited in characters
        {utf8, 4, "xyz", 3, 10, "", 0},
        {utf8, 0, "xyz", 3, 2, Bytes("xy\0"), 2},
        {ansi, 1, "\xEF\xBB\xBFz\xE4\xB8\xAD", 0, 1, Bytes("z\xD6\xD0\0"), 3},
        {ansi, 3, Bytes("\xA4\xA4\0\xD6"), 4, 1, Bytes("\xA4\xA4\0\xD6\0"), 4},
        {ansi, 8, Bytes("\x2D\x4Ez\0\xA9\0"), 3, 1, Bytes("\xD6\xD0z\xA1\xA1\0\0"), 3},
        {ansi, 8, "", 0, 1, Bytes("\0\0"), 0},
        {ansi, 9, "xyz", 3, 10, "", 0},
        {ansi, 0, "\xEF\xBB\xBF\xE4\xB8\xAD", 6, 1, Bytes("\xD6\xD0\0"), 2},
    };
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    for (const auto& row : kRows) {
        SCOPED_TRACE("row " + std::to_string(&row - kRows) + ", " + Hex(row.input));
        unsigned long length = row.capacity, result = 0;
        CodeTrans_iTransErrCnt = 5;
        const std::string output =
            Written(row.convert, row.encoding, row.input, row.length, row.output.size(), length, result);
        EXPECT_EQ(Hex(output), Hex(row.output));
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(length, row.capacity == 77 ? 77 : row.result);
        if (row.convert == units) {
            EXPECT_EQ(CodeTrans_iTransErrCnt, 0u);
        } else if (row.input == "z\xD6") {
            EXPECT_EQ(CodeTrans_iTransErrCnt, 1u);
        }
    }
}

TEST(ConversionTest, NullInputIsEmpty) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    for (const auto convert : {CodeTrans_ToUnicode, CodeTrans_ToUtf8, CodeTrans_ToAnsi, GBKBig5_ToUnicode}) {
        for (const int encoding : {0, 1, 2, 3, 8}) {
            char output[2];
            unsigned long length = 0;
            EXPECT_EQ(convert(encoding, nullptr, 0, output, length), 0u) << encoding;
            EXPECT_EQ(length, 0u);
        }
    }
}

}  // namespace
