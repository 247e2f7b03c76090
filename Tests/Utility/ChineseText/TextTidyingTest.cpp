#include "Utility/ChineseText/TextTidying.h"

#include <cctype>
#include <string>
#include <tuple>

#include "Support/TestSupport.h"
#include "Utility/ChineseText/CharacterClass.h"

namespace {

using test_support::Hex;

// The list of full-width marks as stored, and the ASCII bytes that half its byte offsets choose.
constexpr char kFullWidth[] =
    "、。—～‘’“”〔〕〈〉〖〗（）＊＋，－．／：；＜＝＞？［］＿｀｛｜｝˙–―﹐﹑﹒﹔﹕﹖﹗﹙﹚﹛﹜﹝﹞﹟﹠﹡﹢﹣"
    "﹤﹥﹦﹨﹩﹪﹫";
constexpr char kHalfWidth[] = ",.-~''\"\"()<>[]()*+,-./:;<=>?[]_'{|}.--,,.;:?!(){}()#&*+-<>=\\$%@";

void ExpectFolded(std::string text, const std::string& folded) {
    SCOPED_TRACE(Hex(text));
    const bool changes = folded != text;
    EXPECT_EQ(QuanJiao2BanJiao(text.data()), changes);
    EXPECT_EQ(Hex(text.c_str()), Hex(folded));
}

// Every two-byte unit, every lone lead byte, and a text of several.
TEST(TextTidyingTest, FoldsWhatTheListSays) {
    for (unsigned code = 0x80; code < 65536 && !testing::Test::HasFailure(); ++code) {
        if (code > 0xFF && (code < 0x8000 || (code & 0xFF) == 0)) continue;
        std::string unit(1, static_cast<char>(code & 0xFF));
        if (code > 0xFF) unit.insert(0, 1, static_cast<char>(code >> 8));
        const char* const found = CC_Find(kFullWidth, unit.c_str());
        std::string folded = found != nullptr && found - kFullWidth < 126
                                 ? std::string(1, kHalfWidth[(found - kFullWidth) / 2])
                                 : unit;
        if (code >> 8 == 0xA3 && (code & 0x80) != 0 && std::isalnum(code & 0x7F) != 0)
            folded = static_cast<char>(code & 0x7F);
        ExpectFolded(unit, folded);
    }
    ExpectFolded("x\xD6\xD0\xA3\xE1-\xA3\xB9\xA1\xEF\xA1\xA3\xBC\xBD,\xE3",
                 "x\xD6\xD0"
                 "a-9\xA1\xEF\xA1\xA3!,,");
}

TEST(TextTidyingTest, WhiteSpace) {
    const std::tuple<std::string, std::string, std::string, std::size_t> rows[] = {
        {"", "", "", 0},
        {"\n", "", "", 0},
        {"\r\n\r\n", "", "", 0},
        {"ab cd\n", "ab cd", "ab cd", 4},
        {"中 文", "中文", "中 文", 6},
        {"中 a\t文\r\n", "中 a\t文", "中 a 文", 7},
        {"  a\t\tb ", " a\t\tb ", "a b", 2},
        {"1 \t 2 \n", "12", "1 2", 2},
        {"\v \f", "\v\f", "\v \f", 2}};
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
