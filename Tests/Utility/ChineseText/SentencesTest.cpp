#include <cctype>
#include <cmath>

#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

using test_support::Character, test_support::Hex;
using Row = std::tuple<std::string, std::size_t, std::size_t, std::size_t>;  // text, position, budget, result

// The list of full-width marks as stored, and the ASCII bytes that half its byte offsets choose.
constexpr char kFullWidth[] =
    "、。—～‘’“”〔〕〈〉〖〗（）＊＋，－．／：；＜＝＞？［］＿｀｛｜｝˙–―﹐﹑﹒﹔﹕﹖﹗﹙﹚﹛﹜﹝﹞﹟﹠﹡﹢﹣"
    "﹤﹥﹦﹨﹩﹪﹫";
constexpr char kHalfWidth[] = ",.-~''\"\"()<>[]()*+,-./:;<=>?[]_'{|}.--,,.;:?!(){}()#&*+-<>=\\$%@";

TEST(SentencesTest, EndsAndStarts) {
    // clang-format off
    const Row end_rows[] = {
        {"a.b", 0, 99, 2}, {"a.b", 0, 2, 2}, {"a.b", 0, 1, 3}, {"a.b", 0, 0, 3}, {"a.b", 2, 99, 3},
        {"a.b", 3, 99, 3}, {"a.b", 4, 99, 3}, {"a.b", 1027, 9, 3}, {"a.b", ~0ul, 9, 3}, {"", 1, 99, 0}, {"a\xD6", 0, 99, 2},
        {"\xD6.b!", 0, 99, 4}, {"\xB5\xE3\xA1\xA3xy\tz", 0, 99, 7}, {"\xB5\xE3;", 0, 3, 3}, {"\xB5\xE3x;y", 0, 3, 5},
        {"。b.", 0, 99, 2}, {"a。b!c", 0, 99, 3}, {"中。x", 0, 99, 7}, {"中文。x", 0, 99, 8}};
    const Row start_rows[] = {
        {"x.yz", 4, 99, 2}, {"x.yz", 4, 2, 0}, {"x.yz", 4, 3, 2}, {"xyz", 3, 99, 0}, {".xy", 3, 99, 0},
        {"x.", 1, 99, 0}, {"x.", 2, 99, 2}, {"", 0, 99, 0}, {"a;\xD6\xD0\xB9\xFA", 6, 99, 2},
        {"a;\xD6\xD0\xB9\xFA", 6, 4, 0}, {"\xE3\x80x", 3, 99, 0}, {"x\xE3\x80y", 4, 99, 3}};
    // clang-format on
    for (const auto& [text, start, budget, end] : end_rows) {
        const std::vector<char> exact = test_support::Exactly(text + '\0');
        EXPECT_EQ(FindSentenceEnd(exact.data(), start, budget), end) << Hex(text) << " from " << start;
    }
    for (const auto& [text, end, budget, start] : start_rows)
        EXPECT_EQ(FindSentenceStart(text.c_str(), end, budget), start) << Hex(text) << " from " << end;
}

void ExpectFolded(const std::string& text, const std::string& folded) {
    std::string rewritten = text;
    EXPECT_EQ(QuanJiao2BanJiao(rewritten.data()), folded != text) << Hex(text);
    EXPECT_EQ(Hex(rewritten.c_str()), Hex(folded)) << Hex(text);
}

// Every two-byte unit and every single byte, against the search in the lists themselves.
TEST(SentencesTest, EveryUnitIsWhatTheListsSay) {
    for (unsigned code = 1; code < 65536 && !HasFailure(); ++code) {
        if ((code > 0xFF && code < 0x8000) || (code & 0xFF) == 0) continue;
        const std::string unit = Character(code);
        const bool ends =
            code > 0xFF ? CC_Find("。！？；", unit.c_str()) != nullptr : std::strchr(".!;?\r\n\t", unit[0]) != nullptr;
        EXPECT_EQ(FindSentenceEnd((unit + "-").c_str(), 0, unit.size()) == unit.size(), ends) << Hex(unit);
        const std::size_t start = FindSentenceStart(("-" + unit).c_str(), 1 + unit.size(), 1);
        EXPECT_TRUE(start == (ends ? 1 + unit.size() : 0) || (code > 0xFF && (code & 0x80) == 0)) << Hex(unit);
        std::string folded = unit;
        const char* const found = CC_Find(kFullWidth, unit.c_str());
        if (found != nullptr && found - kFullWidth < 126) folded = kHalfWidth[(found - kFullWidth) / 2];
        if (code >= 0xA380 && code < 0xA400 && std::isalnum(code & 0x7F)) folded = Character(code & 0x7F);
        ExpectFolded(unit, folded);
    }
    ExpectFolded("x\xD6\xD0\xA3\xE1-\xA3\xB9\xA1\xEF\xA1\xA3\xBC\xBD,\xE3", "x\xD6\xD0\x61-9\xA1\xEF\xA1\xA3!,,");
}

TEST(SentencesTest, TitlesAndSentencesAreJudgedByTheirEnd) {
    const std::pair<const char*, const char*> rows[] = {{"title sentence", "a. a: a) 中： 中； 中）"},
                                                        {"title ", "a a! 。 中？ \xD6\xD0\xA1\xA3"},
                                                        {"sentence", "; a; 中。 x。 中！"}};
    for (const auto& [kinds, lines] : rows) {
        for (const std::string& line : test_support::Words(lines)) {
            const std::string title = IsValidTitle(line.c_str()) ? "title " : "";
            EXPECT_EQ(title + (IsValidSentence(line.c_str()) ? "sentence" : ""), kinds) << line;
        }
    }
    EXPECT_FALSE(IsValidTitle("") || IsValidSentence(""));
    EXPECT_EQ(GetMaxIndex({}), -1);  // the first of the largest scores, and what no number is
    EXPECT_EQ(GetMaxIndex({-4, -3, -3}), 1);
    EXPECT_EQ(GetMaxIndex({1, NAN, 5}), 2);
}

TEST(TextTidyingTest, WhiteSpace) {
    // clang-format off
    const std::tuple<std::string, std::string, std::string, std::size_t> rows[] = {
        {"", "", "", 0}, {"\n", "", "", 0}, {"\r\n\r\n", "", "", 0}, {"ab cd\n", "ab cd", "ab cd", 4},
        {"中 文", "中文", "中 文", 6}, {"中 a\t文\r\n", "中 a\t文", "中 a 文", 7},
        {"  a\t\tb ", " a\t\tb ", "a b", 2}, {"a  1", "a 1", "a 1", 2}, {"1 \t 2 \n", "12", "1 2", 2}, {"\v \f", "\v\f", "\v \f", 2}};
    // clang-format on
    for (const auto& [text, standard, normal, bytes] : rows) {
        SCOPED_TRACE(Hex(text));
        std::string tidied = "old", squeezed = text;
        TextStandard(text.c_str(), tidied);
        EXPECT_EQ(tidied, standard);
        EXPECT_STREQ(StrNormalize(squeezed.data()), normal.c_str());
        EXPECT_EQ(strlen_nospace(text.c_str()), bytes);
    }
    EXPECT_EQ(StrNormalize(nullptr), nullptr);
    std::string indented = "a";
    EXPECT_EQ(TextIndent(indented, 2, '-') + TextIndent(indented, 0, '-'), 2);
    EXPECT_EQ(indented, "a\r\n--\r\n");
}

}  // namespace
