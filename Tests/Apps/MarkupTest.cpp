#include "Markup.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "Splitting.h"
#include "Support/TestSupport.h"

namespace {

using pagetext::MarkupToText;

TEST(MarkupTest, KeepsTheTextAndNothingElse) {
    struct Row {
        const char* html;
        const char* text;
    };
    const std::string long_tag = "<img src=\"data:" + std::string(3000, 'A') + "\">x";
    const Row rows[] = {
        {"", ""},
        {"<p>一<b>二</b>三</p>四", "一二三\n四"},
        {"<td>a</td><td>b</td>", "a b"},
        {"<script type='x'>if (a<b) {}</script >z", "z"},
        {"<STYLE media=print>p{}</Style>z", "z"},
        {"<script>never closed", "never closed"},
        {"<a title=\"1>0\" href='x'>y</a>", "y"},
        {"<a href=\"forgotten>y</a> <a href=\"z\">w</a>", "y w"},
        {"<p<b>x", "x"},
        {long_tag.c_str(), "x"},
        {"a<!-- <b>no</b> -->b", "a b"},
        {"a<!-- open", "a<!-- open"},
        {"a<!-->b<!--->c<!-- x -->d", "a b c d"},
        {"<title>1 <b>&amp; 2</title><textarea>if (a<b) x</textarea>", "1 <b>& 2\nif (a<b) x"},
        {"&#x0000000000000000000000000000000000000000000000000000000000000041;&#127;", "A\x7F"},
        {"5 < 6, a<", "5 < 6, a<"},
        {"&lt;p&gt; &amp;lt; AT&T &copy;2026&nbsp;x", "<p> &lt; AT&T ©2026 x"},
        {"&#x4E2D;&#20013;&#233;&#150;&#xD800;&#0;&notin;&unknown;", "中中é–\uFFFD\uFFFD∉&unknown;"},
        {"100%20 %E4 nbsp; &#37;41", "100%20 %E4 nbsp; %41"},
        {"<div> a \r\n\n\n\n b </div>", "a\n\nb"},
    };
    for (const Row& row : rows) EXPECT_EQ(MarkupToText(row.html), row.text) << row.html;
    EXPECT_EQ(MarkupToText(std::string_view("a\0b", 3)), "a\uFFFDb");
}

// Openings without closings must not make the page cost more per byte the longer it is.
TEST(MarkupTest, HostilePagesTakeLinearTime) {
    // Time of this process alone: the machine may be busy with other things.
    const auto cpu_seconds = [](const std::string& page) {
        const std::clock_t start = std::clock();
        MarkupToText(page);
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    // The best of three: at these lengths a moment's pause counts.
    const auto best_of_three = [&](const std::string& page) {
        return std::min({cpu_seconds(page), cpu_seconds(page), cpu_seconds(page)});
    };
    for (const char* piece : {"<!--", "&", "<script>", "<script x>", "<b", "<a \"", "<a 'x\"", "<a \"<a \" ",
                              "<style><a '", "\"<b\" "}) {
        std::string small, large;
        while (small.size() < 50000) small += piece;
        for (int i = 0; i < 16; ++i) large += small;
        // Sixteen times the bytes: quadratic time would be 256 times.
        EXPECT_LT(best_of_three(large), 80 * best_of_three(small) + 0.05) << piece;
    }
}

TEST(SplittingTest, SentencesEndAtChineseAndWesternMarks) {
    const std::vector<std::string_view> expected = {"他说：“走吧！”", "真的吗？！", "It is 3.14.",
                                                    "Yes (really!)",  "甲；乙。",   "没有句号"};
    EXPECT_EQ(pagetext::Sentences("他说：“走吧！”真的吗？！It is 3.14. Yes (really!)\n\n甲；乙。 没有句号"),
              expected);
    EXPECT_TRUE(pagetext::Sentences(" \n ").empty());
}

TEST(SplittingTest, TokensKeepNumbersWhole) {
    const std::vector<std::string> expected = {"价格", "1,284.50", "元", "3.14", "ok", "中文"};
    EXPECT_EQ(pagetext::Tokens("价格：1,284.50 元（3.14, ok）。中文"), expected);
}

TEST(SplittingTest, AddressesStandInTextOrder) {
    const std::vector<std::string> expected = {"li.lei@example.org", "b-2@mail.example.com",
                                               "b-2@mail.example.com"};
    EXPECT_EQ(pagetext::EmailAddresses(test_support::Bytes(
                  "联系：Li.Lei@Example.ORG。\0 @ 或者<b-2@mail.example.com>, B-2@mail.example.com.")),
              expected);
}

}  // namespace
