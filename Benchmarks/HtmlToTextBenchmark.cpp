// One megabyte of an ordinary page against one megabyte each of the texts that make a scanner search in vain.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "CodeTrans/Html/HtmlToText.h"
#include "Common/Contest.h"

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

// Byte by byte, which no compiler may change for volatile bytes.
void CopyBytes(const volatile char* from, std::size_t bytes, char* to) {
    for (std::size_t i = 0; i < bytes; ++i) to[i] = from[i];
}

// `start_of_text` is all that is checked of hostile pages. The limit is a loop that copies the page, all of it.
void AddPage(const char* kind, const std::string& page, std::string_view start_of_text) {
    bench::Contest contest("vHtmlToText", kind, bench::NameOfSize(page.size()), page.size(),
                           [=] { return std::string(start_of_text); });
    const auto start_of = [=](std::string_view text) { return std::string(text.substr(0, start_of_text.size())); };
    contest.Add(
        "ours",
        [page] {
            return [page, text = std::vector<char>(page.size() + 6)]() mutable {
                unsigned long length = 0;
                vHtmlToText(page.c_str(), page.size(), text.data(), length);
                return std::string_view(text.data(), length);
            };
        },
        start_of);
    contest.Add(
        "bytecopy",
        [page] {
            return [page, text = std::vector<char>(page.size())]() mutable {
                CopyBytes(page.data(), page.size(), text.data());
                return std::string_view(text.data(), text.size());
            };
        },
        [=](std::string_view text) { return text == page ? std::string(start_of_text) : std::string(); });
}

}  // namespace

void bench::SetUpContests() {
    AddPage("ordinary_page", OrdinaryPage(), "图书馆");
    for (const std::size_t bytes : {std::size_t{1} << 10, std::size_t{64} << 10, kPageBytes}) {
        std::string page = Text(Kind::kHtml, "UTF-8", bytes);
        page.resize(bytes, '\n');
        AddPage("generated_page", page, "\n \n");
    }
    AddPage("plain_english", Repeat("Every reader may borrow five books at a time. "), "Every reader");
    AddPage("plain_chinese", Repeat("读者凭证借阅图书，每次可借五册。"), "读者凭证");
    AddPage("open_comments", Repeat("<!--"), "<!--<!--");
    AddPage("ampersands", Repeat("&"), "&&&&");
    AddPage("open_references", Repeat("&a"), "&a&a");
    AddPage("open_scripts", Repeat("<script>"), "<script><script>");
    AddPage("open_tags", Repeat("<b"), "<b<b");
}
