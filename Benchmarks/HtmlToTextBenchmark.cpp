// One megabyte of an ordinary page against one megabyte each of the texts that make a scanner search in vain.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Html/HtmlToText.h"

namespace {

constexpr std::size_t kPageBytes = 1 << 20;

std::string Repeat(std::string_view piece) {
    std::string page;
    while (page.size() + piece.size() <= kPageBytes) page += piece;
    return page.append(kPageBytes - page.size(), '\n');
}

// Paragraphs, lists and links in Chinese and English with a comment and a script here and there.
std::string OrdinaryPage() {
    constexpr std::string_view kParagraph =
        "<p class=\"summary\">图书馆每周一至周五上午九点开放，读者凭证借阅图书，每次可借五册。</p>\n"
        "<p class=\"summary\">The library opens at nine, and every reader may borrow five books at a "
        "time&nbsp;"
        "&mdash; more on <a href=\"/rules.html?page=2&amp;lang=en\" target=\"_blank\">request</a>.</p>\n";
    constexpr std::string_view kList =
        "<ul id=\"news\">\n    <li><a href=\"/news/1024.html\">新书到馆通知</a> <span>[03-12]</span></li>\n"
        "    <li><a href=\"/news/1025.html\">Reading week &#8211; programme</a> "
        "<span>[03-15]</span></li>\n</ul>\n";
    constexpr std::string_view kScript =
        "<!-- counter -->\n<script>\nfor (var i = 0; i < items.length; i++) { show(items[i], 'on'); "
        "}\n</script>\n";
    std::string section;
    for (int i = 0; i < 4; ++i) section.append(kParagraph);
    section.append(kList).append(kScript);
    return Repeat(section);
}

void ToText(benchmark::State& state, const std::string& page, std::string_view start_of_text) {
    std::vector<char> text(page.size() + 6);
    unsigned long length = 0;
    vHtmlToText(page.c_str(), page.size(), text.data(), length);
    if (std::string_view(text.data(), length).substr(0, start_of_text.size()) != start_of_text) {
        state.SkipWithError("wrong text");
        return;
    }
    for (auto _ : state) {
        length = 0;
        vHtmlToText(page.c_str(), page.size(), text.data(), length);
        benchmark::DoNotOptimize(length);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}

BENCHMARK_CAPTURE(ToText, ordinary_page, OrdinaryPage(), "图书馆");
BENCHMARK_CAPTURE(ToText, plain_english, Repeat("Every reader may borrow five books at a time. "), "Every reader");
BENCHMARK_CAPTURE(ToText, plain_chinese, Repeat("读者凭证借阅图书，每次可借五册。"), "读者凭证");
BENCHMARK_CAPTURE(ToText, open_comments, Repeat("<!--"), "<!--<!--");
BENCHMARK_CAPTURE(ToText, ampersands, Repeat("&"), "&&&&");
BENCHMARK_CAPTURE(ToText, open_references, Repeat("&a"), "&a&a");
BENCHMARK_CAPTURE(ToText, open_scripts, Repeat("<script>"), "<script><script>");
BENCHMARK_CAPTURE(ToText, open_tags, Repeat("<b"), "<b<b");

}  // namespace
