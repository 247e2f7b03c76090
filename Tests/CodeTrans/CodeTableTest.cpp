#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>

#include "CodeTrans/Tables/CodeTable.h"
#include "Support/TestSupport.h"

namespace {

TEST(CodeTableTest, HoldsCodePage936AndNothingElse) {
    int two_byte = 0, empty = 0;
    std::uint32_t checksum = 2166136261u;  // FNV-1a over the entries, low byte first
    for (unsigned code_point = 0; code_point < 65536; ++code_point) {
        const unsigned code = CodeTable[code_point];
        two_byte += code > 0xFF;
        empty += code == 0;
        checksum = (checksum ^ (code & 0xFF)) * 16777619u;
        checksum = (checksum ^ (code >> 8)) * 16777619u;
        if (code_point < 0x80) {
            EXPECT_EQ(code, code_point);
        }
    }
    EXPECT_EQ(two_byte, 21791);
    EXPECT_EQ(empty, 65536 - 21791 - 127 - 1);  // U+0000 maps to itself, which is 0 too
    EXPECT_EQ(CodeTable[0x20AC], 0x80);
    EXPECT_EQ(CodeTable[0x4E2D], 0xD6D0);
    EXPECT_EQ(CodeTable[0x00A9], 0);
    EXPECT_EQ(CodeTable[0x00E9], 0xA8A6);
    EXPECT_EQ(checksum, 0x82543781u);  // computed from the published mapping
}

// The C library's own table, which nothing here was made from.
TEST(CodeTableTest, AgreesWithTheCLibrary) {
    SKIP_WITHOUT_GBK_LOCALE();
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    int compared = 0;
    for (unsigned code_point = 0x80; code_point < 65536; ++code_point) {
        const unsigned code = CodeTable[code_point];
        if (code <= 0xFF) continue;
        const char bytes[3] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF), '\0'};
        wchar_t wide[2] = {};
        EXPECT_EQ(std::mbstowcs(wide, bytes, 2), 1u) << std::hex << code;
        EXPECT_EQ(static_cast<unsigned>(wide[0]), code_point) << std::hex << code;
        char back[8] = {};
        EXPECT_EQ(std::wcstombs(back, wide, sizeof back), 2u) << std::hex << code_point;
        EXPECT_STREQ(back, bytes) << std::hex << code_point;
        ++compared;
    }
    EXPECT_EQ(compared, 21791);
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
