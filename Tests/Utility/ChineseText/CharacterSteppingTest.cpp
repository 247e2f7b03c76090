#include "Utility/ChineseText/CharacterStepping.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "Support/TestSupport.h"
#include "Utility/ChineseText/Gb2312Grid.h"

namespace {

using test_support::Hex;

TEST(CharacterSteppingTest, DoubleByteForms) {
    const std::tuple<std::string, std::size_t, int, int> rows[] = {{"Ab", 1, 65, 97},
                                                                   {"z!", 1, 122, 122},
                                                                   {"[", 1, 91, 91},
                                                                   {"\xB0\xA1x", 2, 0xB0A1, 0xB0A1},
                                                                   {"\xB0", 1, -80, 0xB0},
                                                                   {"\x80", 1, -128, 128},
                                                                   {"\x80\x01", 2, 0x8001, 0x8001}};
    for (const auto& [text, length, code, folded_code] : rows) {
        SCOPED_TRACE(Hex(text));
        char unit[3] = {'#', '#', '#'};
        int got = 0;
        EXPECT_EQ(Getchar(text.c_str(), unit), length);
        EXPECT_EQ(std::string(unit, length + 1), text.substr(0, length) + '\0');
        EXPECT_EQ(Getchar(text.c_str(), &got), length);
        EXPECT_EQ(got, code);
        unsigned long position = 0;
        EXPECT_EQ(GetCharCode(text.data(), position, text.size()), folded_code);
        EXPECT_EQ(position, length);
    }
    char unit[3] = {'#', '#', '#'};
    int code = 0;
    EXPECT_EQ(Getchar("", unit) + Getchar("", &code), 0u);
    EXPECT_EQ(unit[0], '\0');
    EXPECT_EQ(code, -1);
}

// The number of leading one bits announces the length; the text's end cuts it.
TEST(CharacterSteppingTest, Utf8LengthFollowsTheLeadByte) {
    for (unsigned lead = 1; lead < 256; ++lead) {
        std::size_t ones = 0;
        while (ones < 8 && (lead << ones & 0x80) != 0) ++ones;
        for (std::size_t follow = 0; follow < 8; ++follow) {
            const std::string text = std::string(1, static_cast<char>(lead)) + std::string(follow, '-');
            std::string buffer(7, '#');
            const std::size_t length = GetUTF8Char(text.c_str(), buffer.data());
            ASSERT_EQ(length, std::min(std::clamp<std::size_t>(ones, 1, 6), follow + 1)) << Hex(text);
            ASSERT_EQ(buffer.substr(0, length + 1), text.substr(0, length) + '\0') << Hex(text);
        }
    }
    EXPECT_EQ(GetUTF8Char("", std::string(7, '#').data()), 0u);
}

TEST(CharacterSteppingTest, LinesSwallowBlankLines) {
    std::string lines;
    char line[16];
    for (const char* next = "\na\r\n\r\nb c\n\xD6\xD0\r\n"; next != nullptr;
         lines += std::string(line) + '|') {
        next = sgets(next, line);
    }
    EXPECT_EQ(lines, "|a|b c|\xD6\xD0|");
    EXPECT_EQ(sgets(nullptr, line), nullptr);
    EXPECT_STREQ(line, "");
}

TEST(CharacterSteppingTest, CharactersAreCountedByEncoding) {
    const std::tuple<const char*, bool, unsigned long, unsigned long> rows[] = {
        {" a\tb\r\n", true, 2, 0},  {"\xD6\xD0 x\xCE\xC4", false, 1, 2},
        {"中文 x", true, 1, 2},     {"中", false, 1, 1},
        {"\xD6 \xD6", false, 1, 1}, {"\xD6 \xD6", true, 1, 1},
        {"\x80\xBF", true, 2, 0},   {"", false, 0, 0}};
    for (const auto& [text, utf8, singles, multis] : rows) {
        unsigned long single_byte = 99, multi_byte = 99;
        EXPECT_EQ(CharStat(text, single_byte, multi_byte, utf8), static_cast<int>(singles + multis))
            << Hex(text);
        EXPECT_EQ(std::tie(single_byte, multi_byte), std::tie(singles, multis)) << Hex(text);
    }
}

TEST(Gb2312GridTest, WritesAscendingCodes) {
    const test_support::TempFolder folder;
    std::string grid_path = folder / "grid", rows_path = folder / "rows", no_file = folder.path().string();
    test_support::WriteFileBytes(rows_path, std::string(200000, 'x'));  // to be replaced
    ASSERT_TRUE(GB2312_Generate(grid_path.data()) && CC_Generate(rows_path.c_str()));
    const std::string grid = test_support::ReadFileBytes(grid_path),
                      rows = test_support::ReadFileBytes(rows_path);
    EXPECT_EQ(grid.size(), 8836u * 11);  // two bytes, two numbers of three digits, two commas, a line feed
    EXPECT_EQ(grid.substr(0, 22), "\xA1\xA1,161,161\n\xA1\xA2,161,162\n");
    EXPECT_EQ(rows.substr(0, 11), "\xB0\xA1,176,161\n");
    EXPECT_EQ(grid.substr(grid.size() - 11), "\xFE\xFE,254,254\n");
    EXPECT_EQ(rows, grid.substr((8836 - 7426) * 11));
    EXPECT_FALSE(GB2312_Generate(no_file.data()) || CC_Generate(no_file.c_str()));
}

}  // namespace
