#ifndef UTILITY_INTERNAL_FOLDINGLISTS_H
#define UTILITY_INTERNAL_FOLDINGLISTS_H

// What punctuation is folded to, as text: GBK and UTF-8 users compile their own bytes or code points out of it.

namespace utility::internal {

// To "(", to ")", to a quotation mark, to a separator.
inline constexpr char kOpeningBracketText[] = "（【";
inline constexpr char kClosingBracketText[] = "）】";
inline constexpr char kQuotationMarkText[] = "“”‘＇";
inline constexpr char kSeparatorText[] = "＼｜，．。、－—　";
inline constexpr char kAsciiSeparators[] = ",/_";

// Marks, and behind them in the same order the ASCII marks nearest to them.
inline constexpr char kWideMarkText[] =
    "、。—～‘’“”〔〕〈〉〖〗（）＊＋，－．"
    "／：；＜＝＞？［］＿｀｛｜｝˙–―﹐﹑﹒﹔"
    "﹕﹖﹗﹙﹚﹛﹜﹝﹞﹟﹠﹡﹢﹣﹤﹥﹦﹨﹩﹪﹫";
inline constexpr char kNarrowMarks[] =
    ",.-~''\"\"()<>[]()*+,-."
    "/:;<=>?[]_'{|}.--,,.;"
    ":?!(){}()#&*+-<>=\\$%@";
static_assert(sizeof kWideMarkText == 188 + 1 && sizeof kNarrowMarks == 63 + 1);

}  // namespace utility::internal

#endif
