#include "Decoding.h"

#include <gtest/gtest.h>

#include <string>

#include "Support/TestSupport.h"

namespace {

using pagetext::Encoding;
using test_support::Bytes;
using test_support::Hex;

std::string BigEndian(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text)
        bytes.append(1, static_cast<char>(unit >> 8)).append(1, static_cast<char>(unit & 0xFF));
    return bytes;
}

TEST(DecodingTest, TakesMarksBeforeTheDetectorAndDeclarations) {
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

}  // namespace
