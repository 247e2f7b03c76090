#include <TextKit.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using textkit::Number;
using textkit::ParseNumber;

// Chinese for 0 to 99,999,999, section by section: of a slower shape than the reader, and its inverse.
std::string Spell(int n, const std::array<const char*, 10>& digits, const std::array<const char*, 4>& units) {
    if (n == 0) return digits[0];
    std::string text;
    if (n >= 10000) {
        text = Spell(n / 10000, digits, units) + "万";
        n %= 10000;
        if (n == 0) return text;
        if (n < 1000) text += digits[0];
    }
    bool zero = false;
    for (int power = 3, divisor = 1000; power >= 0; --power, divisor /= 10) {
        const int digit = n / divisor % 10;
        if (digit == 0) {
            zero = n / divisor != 0;
            continue;
        }
        if (zero) text += digits[0];
        zero = false;
        text += std::string(digits[static_cast<std::size_t>(digit)]) + units[static_cast<std::size_t>(power)];
    }
    return text;
}

constexpr std::array<const char*, 10> kPlain = {"零", "一", "二", "三", "四", "五", "六", "七", "八", "九"};
constexpr std::array<const char*, 10> kCheque = {"零", "壹", "贰", "叁", "肆", "伍", "陆", "柒", "捌", "玖"};
constexpr std::array<const char*, 4> kPlainUnits = {"", "十", "百", "千"}, kChequeUnits = {"", "拾", "佰", "仟"};

TEST(NumbersTest, ReadsEveryNumberThatIsSpelt) {
    for (int n = 0; n < 100000000; n += n < 20000 ? 1 : 997) {
        const std::string plain = Spell(n, kPlain, kPlainUnits);
        const auto value = ParseNumber(plain);
        ASSERT_TRUE(value && *value == (Number{n, 1})) << plain << ' ' << n;
        if (n % 8 != 1) continue;
        ASSERT_EQ(ParseNumber(Spell(n, kCheque, kChequeUnits)), (Number{n, 1})) << n;
        ASSERT_EQ(ParseNumber("负" + plain + "亿"), (Number{n * std::int64_t{-100000000}, 1})) << n;
        std::string positional;
        for (const char c : std::to_string(n)) positional += kPlain[static_cast<std::size_t>(c - '0')];
        ASSERT_EQ(ParseNumber(positional), (Number{n, 1})) << n;
        ASSERT_EQ(ParseNumber("百分之" + plain + "点零五"), ParseNumber(std::to_string(n) + ".05%")) << n;
        ASSERT_EQ(ParseNumber("十二万" + std::to_string(1000 + n % 9000)), (Number{121000 + n % 9000, 1})) << n;
    }
}

TEST(NumbersTest, HaveExactValues) {
    struct Row {
        const char* text;
        std::int64_t numerator, denominator;
    };
    const Row rows[] = {
        {"三百二十", 320, 1},
        {"壹万", 10000, 1},
        {"二〇二六", 2026, 1},
        {"二0二六", 2026, 1},
        {"两千零五", 2005, 1},
        {"十五亿", 1500000000, 1},
        {"一百五", 150, 1},
        {"两万五", 25000, 1},
        {"3万5千", 35000, 1},
        {"3万5", 35000, 1},
        {"3千零5", 3005, 1},
        {"1.5亿", 150000000, 1},
        {"12万3456", 123456, 1},
        {"１２．５", 25, 2},
        {"廿五", 25, 1},
        {"貳拾萬", 200000, 1},
        {"两", 2, 1},
        {"一万二千亿", 1200000000000, 1},
        {"三万亿五千亿", 3500000000000, 1},
        {"一兆二千亿", 1200000000000, 1},
        {"百万", 1000000, 1},
        {"千", 1000, 1},
        {"万亿", 1000000000000, 1},
        {"一点二五万亿", 1250000000000, 1},
        {"1,284.5", 2569, 2},
        {"007", 7, 1},
        {"零", 0, 1},
        {"三分之一", 1, 3},
        {"百分之五", 1, 20},
        {"百分之百", 1, 1},
        {"千分之三", 3, 1000},
        {"三又二分之一", 7, 2},
        {"5分之2", 2, 5},
        {"半", 1, 2},
        {"一半", 1, 2},
        {"5%", 1, 20},
        {"５‰", 1, 200},
        {"6/4", 3, 2},
        {"-6/4", -3, 2},
        {"负百分之三点五", -7, 200},
        {"+3", 3, 1},
        {"−3", -3, 1},
        {"三点一四", 157, 50},
        {"1.500000000000000000000000000", 3, 2},
        {"9223372036854775807", 9223372036854775807, 1},
        {"0.000000000000000001", 1, 1000000000000000000},
        {"九百二十二万三千三百七十二亿亿", 0, 0},
        {"9223372036854775808", 0, 0},
        {"一亿亿亿", 0, 0},
        {"0.0000000000000000001", 0, 0},
        {"二三十", 0, 0},
        {"十几", 0, 0},
        {"几十", 0, 0},
        {"数百", 0, 0},
        {"两三", 0, 0},
        {"三百二千", 0, 0},
        {"三十百", 0, 0},
        {"一百零", 0, 0},
        {"二亿三亿", 0, 0},
        {"2亿15000万", 0, 0},
        {"亿万", 0, 0},
        {"万一", 0, 0},
        {"二〇万", 0, 0},
        {"三百两", 0, 0},
        {"零百", 0, 0},
        {"1,2", 0, 0},
        {"1,2345", 0, 0},
        {"1.2.3", 0, 0},
        {"1.", 0, 0},
        {".5", 0, 0},
        {"三点", 0, 0},
        {"1.5万2千", 0, 0},
        {"三分之", 0, 0},
        {"零分之一", 0, 0},
        {"1/0", 0, 0},
        {"1/2/3", 0, 0},
        {"", 0, 0},
        {"-", 0, 0},
        {"--1", 0, 0},
        {" 1", 0, 0},
        {"一x", 0, 0},
        {"\xE4\xB8", 0, 0},
    };
    for (const Row& row : rows) {
        const auto value = ParseNumber(row.text);
        if (row.denominator == 0) {
            EXPECT_FALSE(value) << row.text;
        } else {
            EXPECT_EQ(value, (Number{row.numerator, row.denominator})) << row.text;
        }
    }
}

TEST(NumbersTest, AreFoundInText) {
    struct Row {
        const char* text;
        const char* found;
    };
    const Row rows[] = {
        {"", ""},
        {"2026年11月23日", "2026 11 23 "},
        {"约三万五千人，增长5%，三百两银子，一半", "三万五千 5% 三百 一半 "},
        {"半岛上百人，二三十个，十几，几十，数百万，万一", ""},
        {"v1.2.3 GBK2 x86_64 iPhone15 1.2.3 COVID-19", "19 "},
        {"-5度 3-5 (-5) =-5 a-5 三-五 负五 --5", "-5 3 5 -5 -5 5 三 五 负五 5 "},
        {"1/2，11/23/2026；1,000,000元", "1 2 11 23 2026 1,000,000 "},
        {"三点五十分，三点五，三点，三又，五分之前，三分之一", "三 五十 三点五 三 三 五 三分之一 "},
        {"99999999999999999999和１２", "１２ "},
    };
    for (const Row& row : rows) {
        std::string found;
        for (const textkit::NumberMatch& match : textkit::Numbers(row.text)) found += std::string(match.text) + ' ';
        EXPECT_EQ(found, row.found) << row.text;
    }
}

// What is found lies in the text, in its order, and has the value that it has alone.
TEST(NumbersTest, FoundAndAloneAreTheSame) {
    const std::vector<std::string> pieces = {"1",  "5",  "0",  "二", "零", "十",   "百",     "万",  "亿",
                                             "两", "点", ".",  ",",  "%",  "分之", "百分之", "又",  "半",
                                             "-",  "负", "几", "廿", "/",  "a",    "人",     "\xE4"};
    std::minstd_rand random(6);
    int matches = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string text;
        for (std::size_t n = random() % 9; n > 0; --n) text += pieces[random() % pieces.size()];
        const char* pos = text.data();
        for (const textkit::NumberMatch& match : textkit::Numbers(text)) {
            ASSERT_GE(match.text.data(), pos) << text;
            ASSERT_EQ(ParseNumber(match.text), match.value) << text << ' ' << match.text;
            pos = match.text.data() + match.text.size();
            ++matches;
        }
        ASSERT_LE(pos, text.data() + text.size());
    }
    EXPECT_GT(matches, 100000);
}

TEST(NamesTest, TellForeignNamesAndPlaces) {
    using textkit::NameStyle;
    struct Row {
        const char* word;
        NameStyle style;
        double share;
    };
    const Row rows[] = {{"史密斯", NameStyle::kWestern, 1},     {"比尔·盖茨", NameStyle::kWestern, 1},
                        {"比尔・盖茨", NameStyle::kWestern, 1}, {"伊万诺娃", NameStyle::kSlavonic, 1},
                        {"佐藤", NameStyle::kJapanese, 1},      {"山田太郎", NameStyle::kJapanese, 0.5},
                        {"雅典", NameStyle::kJapanese, 1},      {"史x", NameStyle::kWestern, 0.5},
                        {"", NameStyle::kWestern, 0},           {"·", NameStyle::kWestern, 0},
                        {"电脑", NameStyle::kWestern, 0}};
    for (const Row& row : rows) {
        const textkit::ForeignName name = textkit::MatchForeignName(row.word);
        EXPECT_EQ(name.style, row.style) << row.word;
        EXPECT_EQ(name.share, row.share) << row.word;
    }
    const char* const places[][2] = {{"北京", "市"},       {"新疆维吾尔", "自治区"},
                                     {"京珠", "高速公路"}, {"海淀", "区"},
                                     {"北京", ""},         {"市", ""},
                                     {"广场", ""},         {"", ""},
                                     {"首都国际", "机场"}, {"公", "路"},
                                     {"x", "县"},          {"abc", ""}};
    for (const auto& [stem, suffix] : places) {
        const std::string name = std::string(stem) + suffix;
        EXPECT_EQ(textkit::SplitPlaceName(name).stem, stem);
        EXPECT_EQ(textkit::SplitPlaceName(name).suffix, suffix) << name;
    }
}

}  // namespace
