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

// A character at a time, with maps that differ in every entry, against what takes several at a time.
TEST(ConversionTest, DecodesRunsAsCharacterByCharacter) {
    std::mt19937 random(1);
    std::string file = DataFileBytes({});
    std::generate_n(file.begin(), kMapsSize, [&] { return static_cast<char>(random()); });
    ASSERT_EQ(Load(file), 0);
    for (int round = 0; round < 20000; ++round) {
        const std::string text =
            RandomRuns(random, {"a b z", "\xD6\xD0 \xB0\xA1 \x81\x40", "\x80 \xFF \n a\xFE", "a \xB0\xC4"});
        const int encoding = 2 + round % 2;
        const std::size_t size = random() % 3 == 0 ? random() % (2 * text.size() + 2) : 2 * text.size();
        std::string expected;
        std::size_t errors = 0;
        for (std::size_t pos = 0; pos < text.size() && expected.size() + 2 <= size; ++pos) {
            const auto lead = static_cast<unsigned char>(text[pos]);
            if (lead < 0x80) {
                expected.append({text[pos], '\0'});
            } else if (pos + 1 == text.size()) {
                expected += "\xFF\xFE";
                ++errors;
            } else {
                const auto trail = static_cast<unsigned char>(text[++pos]);
                const int entry = (trail > 0x40 ? trail - 0x40 : 0) * 128 + (lead & 0x7F);
                expected += file.substr(static_cast<std::size_t>((encoding == 3 ? 24576 : 0) + entry) * 2, 2);
            }
        }
        unsigned long length = size, result = 0;
        const std::string output = Written(GBKBig5_ToUnicode, encoding, text, text.size(), size, length, result);
        ASSERT_EQ(Hex(output), Hex(expected + std::string(size - expected.size(), 'x'))) << Hex(text);
        ASSERT_EQ(length, expected.size());
        ASSERT_EQ(CodeTrans_iTransErrCnt, errors);
    }
    CodeTrans_Destroy();
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
