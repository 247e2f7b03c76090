#include "Decoding.h"

#include <STLCodeTrans.h>
#include <gtest/gtest.h>

#include "Support/TestSupport.h"

namespace {

using pagetext::Encoding;
using test_support::Bytes;
using test_support::Hex;

class DecodingTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0); }
    static void TearDownTestSuite() { CodeTrans_Destroy(); }
};

TEST_F(DecodingTest, LosesNothingOfMalformedText) {
    struct Row {
        Encoding encoding;
        std::string bytes;
        std::string text;
        std::size_t replaced;
    };
    const Row rows[] = {
        {Encoding::kGbk, "a\xD6\xD0", "a中", 0},
        {Encoding::kGbk, "\xD6", "\uFFFD", 1},                   // ends on a lead byte
        {Encoding::kGbk, "\xD6\n<b>", "\uFFFD\n<b>", 1},         // a line end is no trail byte
        {Encoding::kGbk, "\xB0\xA1\xA2\x41z", "啊\uFFFDAz", 1},  // A2 41 is unassigned: its "A" is text again
        {Encoding::kGbk, "\xA2\xA1\xA2\xAF", "ⅰ\uFFFD", 1},      // A2 AF is unassigned
        {Encoding::kGbk, "\x80\xFF", "€\uFFFD", 1},
        {Encoding::kGbk, Bytes("a\0b"), Bytes("a\0b"), 0},
        {Encoding::kGbk, "\x84\x31\xA4\x37!", "\uFFFD!", 1},  // GB18030's four bytes are one mark
        {Encoding::kBig5, "\xA4\xA4\xA4\x40\x80", "中一\uFFFD", 1},
        {Encoding::kBig5, "\x87\x40\x88\x62",
         "䏰\uFFFD"
         "b",
         1},  // 88 62 stands for two code points
        {Encoding::kUtf8, "\xEF\xBB\xBF中", "中", 0},
        {Encoding::kUtf8,
         "\xE4\xB8"
         "A",
         "\uFFFD"
         "A",
         1},  // one mark for a sequence cut short
        {Encoding::kUtf8, "\xF0\x9F\x8D\x9E\xF0\x9F\x8D", "🍞\uFFFD", 1},
        {Encoding::kUtf8, "\xC0\x80\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", 5},
        {Encoding::kUtf16Le,
         Bytes("\xFF\xFE\x2D\x4E\x3C\xD8\x5E\xDF\x00\xD8"
               "A\0B"),
         "中🍞\uFFFD"
         "A\uFFFD",
         2},
        {Encoding::kUnknown, "\xE4\xB8\xAD", "中", 0},
        {Encoding::kUnknown, "\xD6\xD0", "中", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Hex(row.bytes));
        const pagetext::Decoded decoded = pagetext::Decode(row.bytes, row.encoding);
        EXPECT_EQ(Hex(decoded.text), Hex(row.text));
        EXPECT_EQ(decoded.replaced, row.replaced);
    }
    EXPECT_EQ(pagetext::Decode("\x84\x31\xA4\x37", Encoding::kGbk).gb18030_four, 1u);
}

// Whatever the bytes, the result is valid UTF-8; every ASCII byte of a double-byte page that no character claims stays.
TEST_F(DecodingTest, AlwaysGivesValidUtf8) {
    for (const Encoding encoding : {Encoding::kGbk, Encoding::kBig5, Encoding::kUtf8, Encoding::kUtf16Le}) {
        for (unsigned pair = 0; pair < 65536; ++pair) {
            const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF), 'z',
                                       '.'};
            const std::string text = pagetext::Decode(bytes, encoding).text;
            ASSERT_TRUE(pagetext::IsValidUtf8(text)) << Hex(bytes);
            if (encoding != Encoding::kUtf16Le) {
                ASSERT_EQ(text.back(), '.') << Hex(bytes);
            }
        }
    }
}

std::string BigEndian(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text)
        bytes.append(1, static_cast<char>(unit >> 8)).append(1, static_cast<char>(unit & 0xFF));
    return bytes;
}

TEST_F(DecodingTest, TakesMarksBeforeTheDetectorAndDeclarations) {
    struct Row {
        std::string bytes;
        Encoding encoding;
    };
    const Row rows[] = {
        {"", Encoding::kAscii},
        {"<meta charset=big5> plain", Encoding::kAscii},
        {"\xEF\xBB\xBF"
         "a",
         Encoding::kUtf8},
        {Bytes("\xFF\xFE"
               "a\0"),
         Encoding::kUtf16Le},
        {Bytes("\xFE\xFF\0a"), Encoding::kUtf16Be},
        {Bytes("\0<\0h\0t\0m\0l\0>"), Encoding::kUtf16Be},
        {"<meta charset = 'big5'>\xFFx", Encoding::kBig5},  // nothing that the detector can decide
        {"<?xml encoding=\"x\"?><meta charset=gb2312>\xFFx", Encoding::kGbk},
        {"It is no more than one odd byte: don\x92t", Encoding::kUnknown},
        {Bytes("A page of English markup with one NUL\0 in it, and nothing else"), Encoding::kUnknown},
        {BigEndian(u"各位住户：因更换水管，本楼将于五月二十日上午停水。"), Encoding::kUtf16Be},
        {Bytes("\xFF\xFE\0\0a\0\0\0"), Encoding::kUtf32},
    };
    for (const Row& row : rows) {
        EXPECT_STREQ(pagetext::NameOf(pagetext::DetectEncoding(row.bytes)), pagetext::NameOf(row.encoding))
            << Hex(row.bytes);
    }
}

TEST_F(DecodingTest, GbkOutputKeepsWhatGbkLacksAsReferences) {
    std::size_t references = 0;
    EXPECT_EQ(Hex(pagetext::EncodeGbk("A中©🍞", references)), Hex("A\xD6\xD0&#169;&#127838;"));
    EXPECT_EQ(references, 2u);
    // Every character of GBK goes there and back.
    std::string all;
    for (unsigned code_point = 1; code_point < 65536; ++code_point) {
        if (CodeTable[code_point] != 0) pagetext::AppendCodePoint(all, code_point);
    }
    EXPECT_EQ(pagetext::Decode(pagetext::EncodeGbk(all, references), Encoding::kGbk).text, all);
}

}  // namespace
