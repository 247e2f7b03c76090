#include <TextKit.h>
#include <gtest/gtest.h>
#include <wctype.h>

#include <clocale>

#include "Internal/Utf8Sequences.h"
#include "Support/TestSupport.h"

namespace {

using textkit::CharacterClass;
using textkit::ClassOf;
using textkit::Fold;
using textkit::FoldOptions;
using textkit::LineEnds;
using textkit::Sentences;

std::string Utf8(char32_t code_point) {
    char bytes[4];
    return {bytes, utility::internal::WriteUtf8(code_point, bytes)};
}

// Every text of up to `most` of the pieces.
std::vector<std::string> AllJoined(const std::vector<std::string>& pieces, std::size_t most) {
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0, end = 1; most > 0; --most, end = texts.size())
        for (; i < end; ++i)
            for (const std::string& piece : pieces) texts.push_back(texts[i] + piece);
    return texts;
}

std::string Trimmed(std::string text) {
    for (bool changed = true; changed;) {
        changed = false;
        for (const std::string blank : {" ", "\r", "\n", "　", "\u2028"}) {
            const std::size_t size = text.size();
            if (text.compare(0, blank.size(), blank) == 0) text.erase(0, blank.size());
            if (text.size() >= blank.size() && text.compare(text.size() - blank.size(), blank.size(), blank) == 0)
                text.erase(text.size() - blank.size());
            changed = changed || text.size() != size;
        }
    }
    return text;
}

TEST(CharactersTest, AreTheTextAndWhatDecodeMakesOfIt) {
    for (const std::string& text : test_support::AllTexts("a\xE4\xB8\xED\x9F\xF0\xC2\xFF", 5)) {
        std::string bytes, decoded;
        for (const textkit::Character& c : textkit::Characters(text)) bytes += c.bytes, decoded += Utf8(c.code_point);
        ASSERT_EQ(bytes, text);
        ASSERT_EQ(decoded, textkit::Decode(text, textkit::Encoding::kUtf8).text) << test_support::Hex(text);
    }
}

// The C library has tables of its own.
TEST(CharacterClassTest, AgreesWithTheCLibrary) {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (locale == nullptr) GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    int others = 0;
    for (char32_t c = 0; c < 0x110000; ++c) {
        const auto wide = static_cast<wint_t>(c);
        const CharacterClass kind = ClassOf(c);
        const bool is_alpha = iswalpha_l(wide, locale) != 0, is_punct = iswpunct_l(wide, locale) != 0;
        bool agrees = true;
        switch (kind) {
            case CharacterClass::kSpace:
                agrees = iswspace_l(wide, locale) != 0 || c == 0x85 || c == 0xA0 || c == 0x2007 || c == 0x202F;
                break;
            case CharacterClass::kHan:
                agrees = is_alpha;
                break;
            case CharacterClass::kDigit:
                agrees = iswalnum_l(wide, locale) != 0;
                break;
            case CharacterClass::kControl:
                agrees = iswcntrl_l(wide, locale) != 0 || is_punct;
                break;
            case CharacterClass::kPunctuation:
            case CharacterClass::kSymbol:
                agrees = is_punct || is_alpha;  // some symbols are letters in a circle
                break;
            case CharacterClass::kOther:
                agrees = !is_alpha;
                ++others;
                break;
            default:
                agrees = is_alpha || is_punct;  // marks and other numbers are either
        }
        EXPECT_TRUE(agrees) << std::hex << static_cast<unsigned>(c) << ' ' << static_cast<int>(kind);
    }
    EXPECT_NEAR(others, 0x110000 - 144697 - 65, 0);  // the characters that Unicode 14 counts, and the controls
    freelocale(locale);
}

TEST(CharacterClassTest, KnowsSomeOfEach) {
    const textkit::ClassCounts counts =
        textkit::CountClasses("\t　\u2028 中〇々𠀀 aЖ가ア\u0301 5５٥ ½Ⅷ㈠ 。《-％ +￥⺀ \u200B\uFEFF \uE000\xFF");
    const std::size_t expected[] = {1, 2, 11, 4, 5, 3, 3, 4, 4};
    for (std::size_t i = 0; i < textkit::kCharacterClasses; ++i) EXPECT_EQ(counts.counts[i], expected[i]) << i;
    EXPECT_EQ(counts.total(), 37u);
}

TEST(SentencesTest, EndWhereReadersSayThatTheyEnd) {
    // "|" where a sentence is to end.
    for (const char* const marked :
         {"",
          "一句话。|二句话！|三？！！|四……|五",
          "他说：“走吧！”|然后走了。",
          "“走吧！”，他说。",
          "『好！』」）|是",
          "（真的吗？）|我不信！",
          "他（真的！）来了。",
          "他（真的！|不信。）|来了。",
          "（一。|二）三。",
          "《怎么办？》写得好。|《是！是》",
          "他读了《怎么办？怎么办！》这本书。",
          "走吧！——他说",
          "A、B；C：D，E",
          "“你好。|我是小明。”|他说。",
          "、、。。",
          "pi是3.14。|见example.com的页面。|v1.2.3",
          "3.安装软件。|完成.|下一步",
          "1. Introduction|\n2. Use it.|\n3.1.2. 用它。",
          "It is 3.5. |Right? |Yes!|",
          "Really? he asked. |“Go.” |He went... then not... |Then",
          "http://a.b/?c=d!e |\n x",
          "Dr. Smith, J. K. Rowling and Mr. Li of the U.S. team. |See No. 5. |I said No. |Fine, e.g. this vs. that.",
          "He said \"Hi!\" |\"Bye.\" |'So.'",
          "\"好。\"|他说。|\"走！\"|走了",
          "嗯……|好吧。|嗯...好吧。|嗯…好",
          "……我不知道……等等。",
          "一行\n|二行\r\n|\r\n|三行\u2028|四",
          "　 一句。　|\n 　二句。 ",
          "全角．|下一句有１．５个。",
          "!!! |???",
          "a\xFF\xE4。|\xB8.| B",
          "《没有完。|（没有完！|（还没有完。|",
          "Vitamin C.|中文 in Fig. 3."}) {
        std::string text;
        std::vector<std::string> expected(1);
        for (const char c : std::string_view(marked)) {
            if (c == '|') {
                expected.emplace_back();
            } else {
                text += c;
                expected.back() += c;
            }
        }
        for (std::string& sentence : expected) sentence = Trimmed(sentence);
        expected.erase(std::remove(expected.begin(), expected.end(), ""), expected.end());
        const Sentences found(text);
        EXPECT_EQ(std::vector<std::string>(found.begin(), found.end()), expected) << marked;
    }
}

TEST(SentencesTest, LinesMayBeBroken) {
    const Sentences found("One line\r\nand another. yes\n \nThe next\nparagraph?\nEnd", LineEnds::kAreBlanks);
    EXPECT_EQ(std::vector<std::string>(found.begin(), found.end()),
              (std::vector<std::string>{"One line\r\nand another. yes", "The next\nparagraph?", "End"}));
}

TEST(SentencesTest, LeaveOutBlanksAndNothingElse) {
    const std::vector<std::string> pieces = {"a",  ".",  "!",  " ",  "\n", "。", "”",   "\"",
                                             "《", "》", "（", "）", "…",  "．", "\xE3"};
    for (const std::string& text : AllJoined(pieces, 4)) {
        for (const LineEnds line_ends : {LineEnds::kEndSentences, LineEnds::kAreBlanks}) {
            const char* pos = text.data();
            const auto expect_blanks = [&](const char* end) {
                ASSERT_EQ(std::string(pos, end).find_first_not_of(" \n"), std::string::npos) << text;
            };
            for (const std::string_view sentence : Sentences(text, line_ends)) {
                ASSERT_FALSE(sentence.empty());
                expect_blanks(sentence.data());
                pos = sentence.data() + sentence.size();
                ASSERT_EQ(sentence.find_first_of(" \n"), sentence.find_first_of(" \n", 1)) << text;
                ASSERT_TRUE(sentence.back() != ' ' && sentence.back() != '\n') << text;
            }
            expect_blanks(text.data() + text.size());
        }
    }
}

// Chinese characters and marks without a rule are skipped in ways of their own, which ䷿ (U+4DFF) has no part in.
TEST(SentencesTest, DoNotDependOnWhichCharacterHasNoRule) {
    const std::string pieces[] = {"中", "中", "中", "＃", "〃", "。", "．", "！", "《", "》", "（", "）",
                                  "，", ".",  "!",  "\"", "…",  " ",  "\n", "a",  "A",  "3",  "”",  "\xE4\xB8"};
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string text, plain;
        for (auto count = random() % 40; count > 0; --count) {
            const auto kind = random() % std::size(pieces);
            const std::size_t length = kind < 3 ? 1 + random() % 9 : 1;
            for (std::size_t i = 0; i < length; ++i) text += pieces[kind], plain += kind < 5 ? "䷿" : pieces[kind];
        }
        std::vector<std::pair<std::ptrdiff_t, std::size_t>> places, plain_places;
        for (const std::string_view s : Sentences(text)) places.emplace_back(s.data() - text.data(), s.size());
        for (const std::string_view s : Sentences(plain)) plain_places.emplace_back(s.data() - plain.data(), s.size());
        ASSERT_EQ(places, plain_places) << text;
    }
}

TEST(FoldTest, FoldsEachKind) {
    struct Row {
        FoldOptions options;
        const char* text;
        const char* folded;
    };
    const FoldOptions none{false, false, false, false, false, false};
    const Row rows[] = {
        {{}, "ＡＢｃ１！～　，￥ÀΣЖẞ\xFF中𐐀", "abc1!~ ,¥àσжß\uFFFD中𐐨"},
        {none, "Ａ　《“， \t", "Ａ　《“， \t"},
        {{false, false, true}, "、。—～‘’“”《》【】「」˙﹑﹛Ａ｀", ",.-~''\"\"<>[]\"\".,{Ａ`"},
        {{false, false, false, true}, "【〔〖［｛（[{(】〕〗］｝）]})『“”』‘’＇《", "((((((((()))))))))\"\"\"\"'''《"},
        {{true, false, false, false, true}, "a，b、c/d_e\tf．g-h。i　j＼k|l—m", "a b c d e f.g-h i j k l m"},
        {{true, true, false, false, false, true}, " \n中 　文\r\n a  中， b ", "中文 a 中, b"},
    };
    for (const Row& row : rows) EXPECT_EQ(Fold(row.text, row.options), row.folded) << row.text;
}

TEST(FoldTest, FoldingAgainChangesNothing) {
    std::string all;
    for (char32_t c = 0; c < 0x10000; ++c)
        if (c < 0xD800 || c > 0xDFFF) all += Utf8(c);
    for (unsigned bits = 0; bits < 64; ++bits) {
        const FoldOptions options{(bits & 1) != 0, (bits & 2) != 0,  (bits & 4) != 0,
                                  (bits & 8) != 0, (bits & 16) != 0, (bits & 32) != 0};
        const std::string folded = Fold(all, options);
        EXPECT_TRUE(Fold(folded, options) == folded) << bits;
        EXPECT_TRUE(bits != 0 || folded == all);
    }
}

TEST(FoldTest, FoldsLettersAsTheCLibraryPairsThem) {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (locale == nullptr) GTEST_SKIP() << "no C.UTF-8 locale on this machine";
    int folded = 0;
    for (char32_t c = 0; c < 0x20000; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        const auto lower = static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), locale));
        const auto upper = static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), locale));
        folded += Fold(Utf8(c), {false}) != Utf8(c);
        if (c == 0x130 || c == 0x131) continue;  // the two letters i of Turkish are left as they are
        EXPECT_EQ(Fold(Utf8(c)), Fold(Utf8(lower))) << std::hex << static_cast<unsigned>(c);
        EXPECT_EQ(Fold(Utf8(c)), Fold(Utf8(upper))) << std::hex << static_cast<unsigned>(c);
    }
    EXPECT_GT(folded, 1300);
    freelocale(locale);
}

// Whatever opens and never closes must not make a text cost more per byte the longer it is.
// The tokens of a text by their rule, character by character: 0 is for what is between tokens.
std::vector<std::string> PlainTokens(const std::string& text) {
    std::vector<textkit::Character> all;
    for (const textkit::Character& c : textkit::Characters(text)) all.push_back(c);
    const auto part = [&](std::size_t i) {
        const CharacterClass kind = i < all.size() ? ClassOf(all[i].code_point) : CharacterClass::kOther;
        if (kind == CharacterClass::kHan) return 2;
        const bool is_word = kind == CharacterClass::kLetter || kind == CharacterClass::kDigit ||
                             kind == CharacterClass::kNumber || (i < all.size() && all[i].code_point == '_');
        return is_word ? 1 : 0;
    };
    const auto is_digit = [&](std::size_t i) { return ClassOf(all[i].code_point) == CharacterClass::kDigit; };
    std::vector<std::string> tokens;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (part(i) == 0) continue;
        const int kind = part(i);
        for (tokens.emplace_back(); i < all.size(); ++i) {
            const char32_t c = all[i].code_point;
            const bool joins =
                kind == 1 && part(i + 1) == 1 &&
                (c == '.' || c == '\'' || c == 0x2019 || (c == ',' && is_digit(i - 1) && is_digit(i + 1)));
            if (part(i) != kind && !joins) break;
            tokens.back() += all[i].bytes;
        }
        --i;
    }
    return tokens;
}

// What is done run by run comes to what is done character by character. The pieces lie at the ends of what makes runs.
TEST(ChineseTextTest, RunsGiveWhatTheirCharactersGive) {
    const std::string pieces[] = {"一",
                                  "中文",
                                  "中文中文中文",
                                  "鿿",
                                  "䷿",
                                  "㐀",
                                  "ꀀ",
                                  "ﾡ",
                                  "𠀀",
                                  "々",
                                  "，",
                                  "。",
                                  "　",
                                  "Ａ",
                                  "Ⱥ",
                                  "É",
                                  "\u00A0",
                                  "\u2019",
                                  "٣",
                                  "word",
                                  "Two W",
                                  "0123456789ABCDEFghij",
                                  "_",
                                  ".",
                                  ",",
                                  "'",
                                  "7",
                                  " \t\n",
                                  "\xE4\xB8",
                                  "\xE9",
                                  "\xED\xA0\x80",
                                  "\xFF"};
    std::mt19937 random(1);
    for (int round = 0; round < 30000; ++round) {
        std::string text, folded;
        for (auto count = random() % 24; count > 0; --count) text += pieces[random() % std::size(pieces)];
        const auto bits = random();
        const FoldOptions options{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0, (bits & 16) != 0};
        textkit::ClassCounts counts;
        for (const textkit::Character& c : textkit::Characters(text)) {
            folded += Fold(c.bytes, options);
            ++counts.counts[static_cast<std::size_t>(ClassOf(c.code_point))];
        }
        ASSERT_EQ(Fold(text, options), folded) << test_support::Hex(text);
        ASSERT_EQ(textkit::CountClasses(text).counts, counts.counts) << test_support::Hex(text);
        const textkit::Pieces tokens = textkit::Tokens(text);
        ASSERT_EQ(std::vector<std::string>(tokens.begin(), tokens.end()), PlainTokens(text)) << test_support::Hex(text);
    }
    // Three bytes that are, or just fail to be, a character of a run, at every place of one.
    for (std::size_t before = 0; before <= 12; ++before)
        for (const char lead : {'\xE3', '\xE4', '\xE5', '\xE9', '\xEA'})
            for (const char first : {'\x7F', '\x80', '\xB7', '\xB8', '\xBF', '\xC0'})
                for (const char second : {'\x7F', '\x80', '\xBF', '\xC0'}) {
                    std::string text, folded;
                    for (std::size_t i = 0; i < 2 * before; ++i) text += i == before ? "\u5000" : "不";
                    text.append({lead, first, second}).append("中文中文中文");
                    textkit::ClassCounts counts;
                    for (const textkit::Character& c : textkit::Characters(text)) {
                        folded += Fold(c.bytes);
                        ++counts.counts[static_cast<std::size_t>(ClassOf(c.code_point))];
                    }
                    ASSERT_EQ(Fold(text), folded) << test_support::Hex(text);
                    ASSERT_EQ(textkit::CountClasses(text).counts, counts.counts) << test_support::Hex(text);
                }
    const std::string many(1000, 'a');  // of one class, more than are counted at a time
    EXPECT_EQ(textkit::CountClasses(many + "，" + many)[CharacterClass::kLetter], 2000u);
    for (char32_t c = 0; c < 0x80; ++c)
        EXPECT_EQ(textkit::Trim(Utf8(c)).empty(), ClassOf(c) == CharacterClass::kSpace) << static_cast<unsigned>(c);
}

TEST(ChineseTextTest, HostileTextsTakeLinearTime) {
    const auto cpu_seconds = [](const std::string& text) {
        const std::clock_t start = std::clock();
        const Sentences sentences(text, LineEnds::kAreBlanks);
        const textkit::Numbers numbers(text);
        EXPECT_LE(std::distance(sentences.begin(), sentences.end()) + std::distance(numbers.begin(), numbers.end()),
                  static_cast<std::ptrdiff_t>(2 * text.size()));
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    for (const char* piece : {"《", "(a", "? ", "\n \n", "…", ".\"", "a.a", "\x80", "1", "1.", "1,234,", "三点五",
                              "三又", "三分之", "万", "零", "-"}) {
        std::string small, large;
        while (small.size() < 6000) small += piece;
        for (int i = 0; i < 16; ++i) large += small;
        EXPECT_LT(std::min(cpu_seconds(large), cpu_seconds(large)),
                  80 * std::min(cpu_seconds(small), cpu_seconds(small)) + 0.05)
            << piece;
    }
}

}  // namespace
