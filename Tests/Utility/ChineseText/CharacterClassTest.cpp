#include <cctype>

#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::Character, test_support::Hex;

unsigned char* Unsigned(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

TEST(CharacterClassTest, FindCountsOnlyTheFirstOccurrenceAtAnEvenOffset) {
    const char* const list = "abcb";
    EXPECT_EQ(CC_Find(list, "ab"), list);
    for (const char* const ch : {"c", "cb"}) EXPECT_EQ(CC_Find(list, ch), list + 2) << ch;
    for (const char* const ch : {"b", "bc", "x", "", "abcbc"}) EXPECT_EQ(CC_Find(list, ch), nullptr) << ch;
}

// Strings of up to three bytes from both sides of every limit, against regular expressions over wide
// characters.
TEST(CharacterClassTest, ClassifiersAgreeWithRegularExpressions) {
    const std::tuple<bool (*)(unsigned char*), std::wregex> rows[] = {
        {IsAllChinese, std::wregex(L"([\xB0-\xF7].)*")},
        {IsAllNonChinese, std::wregex(L"([\x01-\x80]|[\x81-\xAF\xF8-\xFF](.|$))*")},
        {IsAllIndex, std::wregex(L"(\xA2.)*[A-Za-z]*")},
        {IsAllLetter, std::wregex(L"(\xA3[\xC1-\xDA\xE1-\xFA])*")},
        {IsAllDelimiter, std::wregex(L"([\xA1\xA3].)*")},
        {[](unsigned char* text) { return GetCCPrefix(text) > 2; }, std::wregex(L"[\xB0-\xF7].[\xB0-\xF7].?")}};
    const std::string alphabet = "\xA1\xA2\xA3\xAF\xB0\xC0\xC1\xDA\xDB\xE0\xE1\xFA\xFB\xF7\xF8\x80\x81@Z{";
    for (std::size_t code = 0; code < 21 * 21 * 21; ++code) {  // the last digit chooses no byte
        std::string text;
        for (std::size_t rest = code, i = 0; i < 3; rest /= 21, ++i) text += alphabet.substr(rest % 21, 1);
        std::wstring wide;
        for (const char c : text) wide += static_cast<unsigned char>(c);
        for (const auto& [test, pattern] : rows)
            ASSERT_EQ(test(Unsigned(text)), std::regex_match(wide, pattern)) << Hex(text);
    }
    std::string lone = test_support::Bytes("\xB0\0\xB0\xA1");  // nothing behind the NUL is looked at
    EXPECT_EQ(GetCCPrefix(Unsigned(lone)), 2u);
}

TEST(CharacterClassTest, SingleByteTestCountsBytes) {
    std::string text(40, '\0');
    for (std::size_t pos = 1; pos < text.size(); ++pos) {
        text[pos] = '\x80';
        EXPECT_TRUE(IsAllSingleByte(Unsigned(text), pos) && IsAllSingleByte(Unsigned(text), 0)) << pos;
        EXPECT_FALSE(IsAllSingleByte(Unsigned(text), pos + 1)) << pos;
        text[pos] = '\x7F';
    }
}

TEST(CharacterClassTest, DelimitersAreAsciiPunctuationAndTwoSymbolRows) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        const bool is_mark = std::ispunct(byte) && !std::strchr("!\\`|", byte);
        const bool listed = byte < 128 && (is_mark || std::strchr("\t\r\n ", byte) != nullptr);
        EXPECT_EQ(IsDelimiter(one.c_str()), listed) << byte;
        EXPECT_EQ(IsDelimiter((one + ",").c_str()), byte == 0xA1 || byte == 0xA3) << byte;
        EXPECT_FALSE(IsDelimiter((one + ",,").c_str())) << byte;
    }
    EXPECT_FALSE(IsDelimiter(""));
}

TEST(CharacterSteppingTest, DoubleByteForms) {
    // clang-format off
    const std::tuple<std::string, std::size_t, int, int> rows[] = {
        {"Ab", 1, 65, 97}, {"z!", 1, 122, 122}, {"[", 1, 91, 91}, {"\xB0\xA1x", 2, 0xB0A1, 0xB0A1},
        {"\xB0", 1, -80, 0xB0}, {"\x80", 1, -128, 0x80}, {"\x80\x01", 2, 0x8001, 0x8001}, {"", 0, -1, 0}};
    // clang-format on
    for (const auto& [text, length, code, folded_code] : rows) {
        SCOPED_TRACE(Hex(text));
        char unit[3] = {'#', '#', '#'};
        int got = 0;
        unsigned long position = 0;
        EXPECT_EQ(Getchar(text.c_str(), unit), length);
        EXPECT_EQ(unit, text.substr(0, length));
        EXPECT_TRUE(Getchar(text.c_str(), &got) == length && got == code) << got;
        EXPECT_EQ(GetCharCode(text.c_str(), position, text.size()), folded_code);
        EXPECT_EQ(position, std::max<std::size_t>(length, 1));
    }
}

// The lead byte announces the length; the text's end cuts it.
TEST(CharacterSteppingTest, Utf8LengthFollowsTheLeadByte) {
    for (unsigned lead = 1; lead < 256; ++lead) {
        std::size_t length = 0;
        while (length < 6 && (lead << length & 0x80) != 0) ++length;  // as many as the byte has leading ones
        for (std::size_t size = 1; size < 9; ++size) {
            const std::string text = static_cast<char>(lead) + std::string(size - 1, '-');
            char buffer[7];
            ASSERT_EQ(GetUTF8Char(text.c_str(), buffer), std::min(std::max(length, 1ul), size)) << Hex(text);
            ASSERT_EQ(buffer, text.substr(0, std::max(length, 1ul)));
        }
    }
}

TEST(CharacterSteppingTest, LinesSwallowBlankLines) {
    std::string lines;
    char line[8];
    const char* next = "\na\r\n\r\nb c\n\xD6\xD0\r\n";
    while (next != nullptr) next = sgets(next, line), lines.append(line) += '|';
    EXPECT_EQ(lines, "|a|b c|\xD6\xD0|");
    EXPECT_EQ(sgets(nullptr, line), nullptr);
    EXPECT_STREQ(line, "");
}

TEST(CharacterSteppingTest, CharactersAreCountedByEncoding) {
    for (const bool utf8 : {false, true}) {
        const char* const text = utf8 ? "a 中\t文\r\n\x80\xE4" : "a \xD6\xD0\t\xCE\xC4\r\n\x80\x80\xD6";
        unsigned long single_byte = 99, multi_byte = 99;
        EXPECT_EQ(CharStat(text, single_byte, multi_byte, utf8), 5);
        EXPECT_EQ(std::pair(single_byte, multi_byte), utf8 ? std::pair(3ul, 2ul) : std::pair(2ul, 3ul));
    }
}

TEST(EnglishTextTest, JudgesTwelveBytes) {
    // In the last, C4 lies between two samples.
    for (const std::string& text : test_support::Words("a a1 z\xA1z\xB1 aaaaa22222 zzz\xC4zzzzzzzzzzzzzzzzzzz"))
        EXPECT_TRUE(IsEnglishText(text.c_str())) << Hex(text);
    for (const std::string& text : test_support::Words(
             "1 1a1 a\xC4 z\xC4zzzzzzzzzzzzzzzzzzzzz zzzzzzzzzzzzzzzzzzzzz\xC4z zzzzzz\xC4zzzzz aaaa222222"))
        EXPECT_FALSE(IsEnglishText(text.c_str())) << Hex(text);
    EXPECT_FALSE(IsEnglishText(nullptr) || IsEnglishText(""));
}

TEST(Gb2312GridTest, WritesAscendingCodes) {
    const test_support::TempFolder folder;
    std::string path = folder / "grid", no_file = folder.path().string(), grid;
    for (unsigned code = 0xA1A1; code <= 0xFEFE; code += (code & 0xFF) == 0xFE ? 0xA3 : 1)
        grid += Character(code) + ',' + std::to_string(code >> 8) + ',' + std::to_string(code & 0xFF) + '\n';
    ASSERT_TRUE(GB2312_Generate(path.data()));
    EXPECT_EQ(test_support::ReadFileBytes(path), grid);
    ASSERT_TRUE(CC_Generate(path.c_str()));  // replaces the longer file
    EXPECT_EQ(test_support::ReadFileBytes(path), grid.substr(grid.find("\xB0\xA1,")));
    EXPECT_FALSE(GB2312_Generate(no_file.data()) || CC_Generate(no_file.c_str()));
}

}  // namespace
