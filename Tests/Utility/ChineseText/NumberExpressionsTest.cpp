#include <cctype>
#include <numeric>
#include <random>

#include "CodeTrans/Normalisation/StringFolding.h"
#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::Character, test_support::Exactly, test_support::Hex, test_support::Words;

// In a block of its own, so that a sanitizer sees a byte read too many.
bool IsNumber(const std::string& word) {
    return IsAllNum(Exactly(word + '\0').data(), 0);
}

// Worked by hand. GBK full-width digits are A3 B0 to A3 B9; of the lists, E2 88 is a separator, EF BC a
// percent sign and a sign, E7 99 a magnitude; alone, E2, EF and E7 too.
TEST(NumberExpressionsTest, Numbers) {
    for (const std::string& word :
         Words("123 -5 - % 12% 3.5% 3.5%x 1/2 -.5 3. 3.x \xA3\xB1\xA3\xB2 \xA3\xB1.\xA3\xB9.5 "
               "3\xE7\x99\xBE -\xE7\x99 3\xE7\x99\xE7\x99 3.\xE7\xE7\x99 3\xEF\xBC 3.5\xEF "
               "3.\xEFx 3\xE2\x88x \xEF\xBC\xA3\xB1 \xD6 3\xD6 3\xE2")) {
        EXPECT_TRUE(IsNumber(word)) << Hex(word);
    }
    for (const std::string& word : Words("abc 1.2.3 .5 +-5 3.xy 3.5%xy x\xD6 %\xD6 3\xE7\x99\xBEx 3.5\xE7\x99\xBE "
                                         "3\xEF\xBC\xE7\x99 3.\xEFxy \xA3\xAD\xA3\xB5 \xA3\xB1.5.5.5 3\xA3\xB1")) {
        EXPECT_FALSE(IsNumber(word)) << Hex(word);
    }
    EXPECT_TRUE(IsNumber("") && IsAllNum("1.2.3", 3) && IsAllNum("3\xE7\x99x", 3));
    for (std::string word : {"", "一二", "\xE6\x95\xE4\xB8", "\xE4\xB8分\xE4\xE4\xB8"})
        EXPECT_TRUE(IsAllChineseNum(word.data(), 0)) << word;
    for (std::string word : {"12", "三百", "\xE4\xB8\xE6\x95", "分", "\xC8\xFD\xB0\xD9"})
        EXPECT_FALSE(IsAllChineseNum(word.data(), 0)) << word;
}

// Every two-byte unit in a place where one list decides.
TEST(NumberExpressionsTest, EveryUnitIsFoundByItsFirstOccurrence) {
    for (unsigned code = 0x8001; code < 65536; code += code % 256 == 255 ? 2 : 1) {
        std::string unit = Character(code), second = "\xE4\xB8" + unit;
        const auto in = [&unit](const char* list) { return CC_Find(list, unit.c_str()) != nullptr; };
        const bool numeral = in("零○一二两三四五六七八九十廿百千万亿壹贰叁肆伍陆柒捌玖拾佰仟兆∶·．／点几上成");
        const bool separator = in("∶·．／"), magnitude = in("百千万亿佰仟兆");
        SCOPED_TRACE(Hex(unit));
        EXPECT_EQ(IsNumber(unit + "1"), in("±第—＋") || (code >= 0xA3B0 && code <= 0xA3B9));
        EXPECT_EQ(IsNumber("1" + unit + "1"), separator);
        EXPECT_EQ(IsNumber("1" + unit), separator || in("％‰") || magnitude);
        EXPECT_EQ(IsNumber("1\xE7\x99" + unit), magnitude);
        EXPECT_EQ(IsAllChineseNum(unit.data(), 0), numeral || in("数第"));
        EXPECT_EQ(IsAllChineseNum(second.data(), 0), numeral);
        EXPECT_EQ(IsYearTime(("\xE2\x80" + unit).c_str(), 0), in("’零○〇０一二三四五六七八九壹贰叁肆伍陆柒捌玖"));
        EXPECT_EQ(IsYearTime((unit + "\xA3\xB1").c_str(), 0), in("５６７８９") && in("±第—＋"));
        EXPECT_EQ(IsYearTime(("\xE5\x8D" + unit + "xxxx").c_str(), 0), in("千仟零〇○"));
        EXPECT_EQ(IsYearTime(unit.c_str(), 0), in("千仟"));
        EXPECT_EQ(IsDayTime(unit.c_str(), 0), in("零一二三四五六七八九十壹贰叁肆伍陆柒捌玖０１２３４５６７８９"));
    }
}

TEST(DateExpressionsTest, YearsAndDays) {
    const std::pair<const char*, const char*> rows[] = {
        {"year day", "98"},
        {"year ", "xx 1998 abcd 199801 \xE2\x80x \xA3\xB1\xA3\xB9\xA3\xB9\xA3\xB8"},
        {"day", "x 45 00 \xE9\x9Bx \xE9\x9B\xE9\x9B\xE9\x9B"},
        {"", "-1 123 19980 1998-1 \xA3\xB9\xA3\xB8 \xE9\x9B\xE9\x9B\xE9\x9B\xE9\x9B \xE5\x8D\xE5\x8D\xE5\x8Dxx"}};
    for (const auto& [kind, words] : rows) {
        for (const std::string& word : Words(words)) {
            const std::string year = IsYearTime(word.c_str(), 0) ? "year " : "";
            EXPECT_EQ(year + (IsDayTime(word.c_str(), 0) ? "day" : ""), kind) << Hex(word);
        }
    }
    EXPECT_TRUE(IsYearTime("19980", 4) && IsDayTime("123", 2) && IsDayTime("", 0));
    EXPECT_FALSE(IsYearTime("19980", -1) || IsYearTime("", 0));
}

std::string Standard(std::string word) {
    EXPECT_EQ(WordStandard(word.data()), word.data());
    return word.c_str();
}

TEST(WordStandardTest, EveryCharacter) {
    for (unsigned code = 1; code < 65536; code == 0xFF ? code = 0x8001 : code += code % 256 == 255 ? 2 : 1) {
        const char ascii = static_cast<char>(code & 0x7F);
        const std::string unit = Character(code);
        std::string form = code > 0xFF || std::strchr("+-{};\r\n", unit[0]) != nullptr ? unit : "";
        if (code >= 0xA3BB && code <= 0xA3FF) form = ";";
        if ((code < 0x80 || (code >= 0xA380 && code <= 0xA3FF)) && std::isalnum(ascii))
            form = static_cast<char>(std::tolower(ascii));
        EXPECT_EQ(Standard(unit), form) << Hex(unit);
    }
    EXPECT_EQ(Standard("\xA3\xC1\xA3\xE2\xA3\xB1,"), "ab1");
    EXPECT_EQ(Standard("A B 7 ."), "a b 7");
    EXPECT_EQ(Standard("A  \xA3\xC1 \xD6\xD0 1 \xD6"), "aa\xD6\xD0 1");
}

// Texts long enough for runs against their characters one by one: what one becomes, as the tests of all characters show
// it.
TEST(FoldingTest, RunsGiveWhatTheirCharactersGive) {
    const struct {
        std::string (*fold)(std::string text);
        bool drops_blanks;
    } rows[] = {
        {[](std::string text) { return QuanJiao2BanJiao(text.data()), std::string(text.c_str()); }, false},
        {[](std::string text) { return std::string(text, 0, str_normalization(text.data(), text.size(), false)); },
         false},
        {[](std::string text) { return std::string(WordStandard(text.data())); }, true},
    };
    const std::string pieces[] = {"\xD6\xD0", "\xCE\xC4", "\xA3\xC1", "\xA1\xA3", "\xA3\xBB", "\xE2\x80",
                                  "\xB0\x41", "\x80\xFF", "a",        "B",        "7",        ",",
                                  "_",        "-",        "x y",      " "};
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        const std::size_t kinds = 1 + random() % std::size(pieces), first = random() % std::size(pieces);
        std::vector<std::string> chosen;
        for (auto left = random() % (round % 20 == 0 ? 2000 : 60); left > 0; --left)
            chosen.push_back(pieces[(first + random() % kinds) % std::size(pieces)]);
        if (random() % 2 == 0) chosen.push_back("\xE2");  // a lone lead byte
        const std::string text = std::accumulate(chosen.begin(), chosen.end(), std::string());
        for (const auto& row : rows) {
            std::string expected;
            for (std::size_t i = 0; i < chosen.size(); ++i) {
                const bool kept_blank = row.drops_blanks && chosen[i] == " " && i + 1 < chosen.size() &&
                                        std::isalnum(static_cast<unsigned char>(chosen[i + 1][0])) != 0;
                expected += kept_blank ? " " : row.fold(chosen[i]);
            }
            ASSERT_EQ(Hex(row.fold(text)), Hex(expected)) << Hex(text);
        }
    }
}

}  // namespace
