#include "Utility/ChineseText/CharacterClass.h"

#include <cctype>
#include <cstring>
#include <regex>
#include <string>
#include <tuple>

#include "Support/TestSupport.h"
#include "Utility/ChineseText/EnglishText.h"

namespace {

using test_support::Hex;

unsigned char* Unsigned(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

TEST(CharacterClassTest, FindCountsOnlyTheFirstOccurrenceAtAnEvenOffset) {
    const char* const list = "abcb";
    for (const auto& [ch, offset] : {std::pair("c", 2), {"ab", 0}, {"cb", 2}}) {
        EXPECT_EQ(CC_Find(list, ch), list + offset) << ch;
    }
    for (const char* const ch : {"b", "bc", "x", "", "abcbc"}) EXPECT_EQ(CC_Find(list, ch), nullptr) << ch;
}

// Strings of up to three bytes from both sides of every limit, against regular expressions over wide characters.
TEST(CharacterClassTest, ClassifiersAgreeWithRegularExpressions) {
    const std::tuple<const char*, bool (*)(unsigned char*), std::wregex> rows[] = {
        {"Chinese", IsAllChinese, std::wregex(L"([\xB0-\xF7].)*")},
        {"non-Chinese", IsAllNonChinese, std::wregex(L"([\x01-\x80]|[\x81-\xAF\xF8-\xFF](.|$))*")},
        {"index", IsAllIndex, std::wregex(L"(\xA2.)*[A-Za-z]*")},
        {"letter", IsAllLetter, std::wregex(L"(\xA3[\xC1-\xDA\xE1-\xFA])*")},
        {"delimiter", IsAllDelimiter, std::wregex(L"([\xA1\xA3].)*")}};
    const std::wregex prefix(L"([\xB0-\xF7](.|$))*");
    const std::string alphabet = "\xA1\xA2\xA3\xAF\xB0\xC0\xC1\xDA\xDB\xE0\xE1\xFA\xFB\xF7\xF8\x80\x81@Z{";
    for (std::size_t code = 0; code < 21 * 21 * 21; ++code) {  // the last digit chooses no byte
        std::string text;
        for (std::size_t rest = code, i = 0; i < 3; rest /= 21, ++i) text += alphabet.substr(rest % 21, 1);
        std::wstring wide;
        for (const char c : text) wide += static_cast<unsigned char>(c);
        for (const auto& [name, test, pattern] : rows) {
            ASSERT_EQ(test(Unsigned(text)), std::regex_match(wide, pattern)) << name << " " << Hex(text);
        }
        std::wsmatch run;
        ASSERT_TRUE(std::regex_search(wide, run, prefix, std::regex_constants::match_continuous));
        ASSERT_EQ(GetCCPrefix(Unsigned(text)), static_cast<std::size_t>(run.length() + run.length() % 2))
            << Hex(text);
    }
    std::string lone = test_support::Bytes("\xB0\0\xB0\xA1");  // nothing behind the NUL is looked at
    EXPECT_EQ(GetCCPrefix(Unsigned(lone)), 2u);
}

TEST(CharacterClassTest, SingleByteTestCountsBytes) {
    std::string text(40, 'a');
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        text[pos] = '\x80';
        EXPECT_FALSE(IsAllSingleByte(Unsigned(text), 0));
        EXPECT_EQ(IsAllSingleByte(Unsigned(text), pos), pos != 0) << pos;
        EXPECT_FALSE(IsAllSingleByte(Unsigned(text), pos + 1)) << pos;
        text[pos] = '\x7F';
    }
    EXPECT_TRUE(IsAllSingleByte(Unsigned(text), 0));
    EXPECT_FALSE(IsAllSingleByte(Unsigned(text = std::string("a\0\x80", 3)), 3));
}

TEST(CharacterClassTest, DelimitersAreAsciiPunctuationAndTwoSymbolRows) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        const bool punctuation =
            byte < 128 && std::ispunct(byte) != 0 && std::strchr("!\\`|", byte) == nullptr;
        EXPECT_EQ(IsDelimiter(one.c_str()), punctuation || (byte != 0 && std::strchr("\t\r\n ", byte)))
            << byte;
        EXPECT_EQ(IsDelimiter((one + ",").c_str()), byte == 0xA1 || byte == 0xA3) << byte;
        EXPECT_FALSE(IsDelimiter((one + ",,").c_str())) << byte;
    }
}

TEST(EnglishTextTest, JudgesTwelveBytes) {
    for (const char* const text : {"a", "a1", "z\xA1z\xB1", "aaaaa22222", "zzz\xC4zzzzzzzzzzzzzzzzzzz"}) {
        EXPECT_TRUE(IsEnglishText(text)) << Hex(text);  // in the last, C4 lies between two samples
    }
    for (const char* const text : {"", "1", "1a1", "a\xC4", "z\xC4zzzzzzzzzzzzzzzzzzzzz",
                                   "zzzzzzzzzzzzzzzzzzzzz\xC4z", "zzzzzz\xC4zzzzz", "aaaa222222"}) {
        EXPECT_FALSE(IsEnglishText(text)) << Hex(text);
    }
    EXPECT_FALSE(IsEnglishText(nullptr));
}

}  // namespace
