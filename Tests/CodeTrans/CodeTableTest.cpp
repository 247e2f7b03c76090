#include "CodeTrans/Tables/CodeTable.h"

#include <cstdint>

#include "Support/TestSupport.h"

namespace {

TEST(CodeTableTest, HoldsCodePage936AndNothingElse) {
    std::uint32_t checksum = 2166136261u;  // FNV-1a over the entries, low byte first
    for (const unsigned code : CodeTable) {
        checksum = (checksum ^ (code & 0xFF)) * 16777619u;
        checksum = (checksum ^ (code >> 8)) * 16777619u;
    }
    EXPECT_EQ(checksum, 0x82543781u);  // computed from the published mapping
}

// The C library's own table, which nothing here was made from: each way, code by code.
TEST(CodeTableTest, AgreesWithTheCLibrary) {
    SKIP_WITHOUT_GBK_LOCALE();
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    int compared = 0;
    for (unsigned code_point = 0x80; code_point < 65536; ++code_point) {
        const unsigned code = CodeTable[code_point];
        if (code <= 0xFF) continue;
        const std::string bytes = test_support::Character(code);
        wchar_t wide[2] = {};
        char back[8] = {};
        EXPECT_EQ(std::mbstowcs(wide, bytes.c_str(), 2), 1u) << std::hex << code;
        EXPECT_EQ(static_cast<unsigned>(wide[0]), code_point) << std::hex << code;
        EXPECT_EQ(std::wcstombs(back, wide, sizeof back), 2u) << std::hex << code_point;
        EXPECT_EQ(back, bytes) << std::hex << code_point;
        ++compared;
    }
    EXPECT_EQ(compared, 21791);
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
