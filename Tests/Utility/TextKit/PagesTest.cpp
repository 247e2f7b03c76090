#include <TextKit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>

#include "Support/TestSupport.h"

namespace {

using textkit::PageText;

TEST(PagesTest, KeepsTheTextAndNothingElse) {
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
        {"a<img alt='&lt;图 \n 一>' src=x>b<IMG src = y\nALT=z/ >c<img/alt=\"\"/>d", "a <图一> b z/ c d"},
        {"<img alt>a<img alt=>b<img =alt='x'>c<img title='alt=1' alt = d<i>e<img alt='x>f", "a b c d e f"},
        {"<pre>a<img alt='b  c'>d</pre><title>e<img alt=f>", "a b  c d\ne f"},
        {"a<!-- <b>no</b> -->b", "ab"},
        {"b<!doctype x>c<?xml 1>d", "bcd"},
        {"a<!-- open", "a<!-- open"},
        {"a<!-->b<!--->c<!-- x -->d", "abcd"},
        {"<title>1 <b>&amp; 2</title><textarea>if (a<b) x</textarea>", "1 <b>& 2\nif (a<b) x"},
        {"&#x0000000000000000000000000000000000000000000000000000000000000041;&#127;", "A\x7F"},
        {"5 < 6, a<", "5 < 6, a<"},
        {"&lt;p&gt; &amp;lt; AT&T &copy;2026&nbsp;x", "<p> &lt; AT&T ©2026 x"},
        {"&#x4E2D;&#20013;&#233;&#150;&#xD800;&#0;&notin;&unknown;", "中中é–\uFFFD\uFFFD∉&unknown;"},
        {"100%20 %E4 nbsp; &#37;41", "100%20 %E4 nbsp; %41"},
        {"<div> a \r\n\n\n\n b </div>", "a b"},
        {"a  b \r\n\n\nc\nd<br>e", "a b\n\nc\nd\ne"},  // before the first tag lines stay
        {"<p>汉\n  字，\r\n<b>x</b>\n汉<i> </i>字", "汉字， x 汉 字"},
        {"<p>a<p></p><div><br>b<br><br><br><br>c</div>", "a\n\nb\n\nc"},
        {"<pre>\n  if x:\n    y  \n\n</pre>z  z", "  if x:\n    y\n\nz z"},
        {"a\xC2\xA0 &nbsp;&#160;\tb&#10;c&Tab;", "a b c"},
        {"a\xFF\xE4\xB8<b>\xC2</b>", "a\uFFFD\uFFFD\uFFFD"},
        {"<x-b>a</x-b>b<image>c<blockquotes>d", "a b c d"},
    };
    for (const Row& row : rows) EXPECT_EQ(PageText(row.html), row.text) << row.html;
    EXPECT_EQ(PageText(std::string_view("a\0b", 3)), "a\uFFFDb");
}

// Whatever the bytes: well-formed, no blank at the end of a line, no two empty lines.
TEST(PagesTest, EveryShortPageGivesTidyText) {
    for (const std::string& html : test_support::AllTexts("<a>\"&;- \n/!\xC2\xA0\xE4", 5)) {
        const std::string text = PageText(html);
        ASSERT_TRUE(textkit::IsValidUtf8(text)) << html;
        ASSERT_EQ((text + "\n").find(" \n"), std::string::npos) << html;
        ASSERT_EQ(text.find("\n\n\n"), std::string::npos) << html;
        ASSERT_TRUE(text.empty() || (text.front() != '\n' && text.back() != '\n')) << html;
    }
}

TEST(PagesTest, KnowsEveryNamedReference) {
    std::ifstream in(UTILITY_TEST_SOURCE_DIR "/Data/named-references.txt");
    int names = 0;
    for (std::string line; std::getline(in, line);) {
        if (line[0] == '#') continue;
        std::istringstream words(line);
        std::string name, code_point, numbers;
        for (words >> name; words >> code_point; numbers += ";") numbers += "&#x" + code_point.substr(2);
        EXPECT_EQ(textkit::DecodeReferences("&" + name), textkit::DecodeReferences(numbers)) << name;
        EXPECT_NE(textkit::DecodeReferences("&" + name), "&" + name);
        ++names;
    }
    EXPECT_EQ(names, 2231);
    EXPECT_EQ(textkit::DecodeReferences("&#x4E2D;&#20013&#233;&#X10FFFF;&#128;&#x81;&#1114112;&#xDFFF;&#;&#x;&"),
              "中中é\U0010FFFF€\u0081\uFFFD\uFFFD&#;&#x;&");
}

// Openings without closings must not make the page cost more per byte the longer it is.
TEST(PagesTest, HostilePagesTakeLinearTime) {
    // Time of this process alone: the machine may be busy with other things.
    const auto cpu_seconds = [](const std::string& page) {
        const std::clock_t start = std::clock();
        PageText(page);
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    // The best of three: at these lengths a moment's pause counts.
    const auto best_of_three = [&](const std::string& page) {
        return std::min({cpu_seconds(page), cpu_seconds(page), cpu_seconds(page)});
    };
    for (const char* piece : {"<!--", "&", "<script>", "<script x>", "<b", "<a \"", "<a 'x\"", "<a \"<a \" ",
                              "<style><a '", "\"<b\" ", "<title>", "<img alt='", "<img alt", "<pre> "}) {
        std::string small, large;
        while (small.size() < 50000) small += piece;
        for (int i = 0; i < 16; ++i) large += small;
        // Sixteen times the bytes: quadratic time would be 256 times.
        EXPECT_LT(best_of_three(large), 80 * best_of_three(small) + 0.05) << piece;
    }
}

// Words and Chinese text are stepped over in blocks, whose edges may lie anywhere.
TEST(PagesTest, TextIsTheSameBehindAnyNumberOfBytes) {
    const std::pair<const char*, const char*> rows[] = {{"b c", "b c"},
                                                        {"b  c", "b c"},
                                                        {"b \n", "b"},
                                                        {"b\tc", "b c"},
                                                        {"b\x01 c", "b\x01 c"},
                                                        {"b \xC2\xA0 c", "b c"},
                                                        {"中 b 文", "中 b 文"},
                                                        {"中\n文", "中文"},
                                                        {"b \xFF c", "b \xEF\xBF\xBD c"},
                                                        {"\xE4\xB8", "\xEF\xBF\xBD"},
                                                        {"b &amp; c", "b & c"},
                                                        {"b <i>c</i> d", "b c d"},
                                                        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}};
    for (const auto& [html, text] : rows) {
        for (std::size_t bytes = 0; bytes < 40; ++bytes) {
            const std::string words = std::string("word of ").substr(8 - bytes % 8) + std::string(bytes / 8 * 8, 'x');
            const std::string prefix = words.find_first_not_of(' ') == 0 ? words : 'w' + words;
            const std::vector<char> page = test_support::Exactly("<p>" + prefix + html);
            EXPECT_EQ(textkit::PageText({page.data(), page.size()}), prefix + text) << bytes;
        }
    }
}

}  // namespace
