// What TextKit makes of pages, against the fixed operation on the same page.

#include <string>
#include <vector>

#include "CodeTrans/Html/HtmlToText.h"
#include "Common/Contest.h"
#include "TextKit.h"

namespace {

using namespace bench;

// The fixed operation gives another text; what is checked is that it gives one.
auto FixedPageText(const std::string& page) {
    return [&page] {
        return [&page, text = std::vector<char>(page.size() + 6)]() mutable {
            unsigned long length = 0;
            vHtmlToText(page.c_str(), page.size(), text.data(), length);
            return length;
        };
    };
}

void AddPages(Kind kind, std::size_t size) {
    const std::string& page = Text(kind, "UTF-8", size);
    const auto some_text = [](const std::string& text) { return std::string(text.empty() ? "none" : "some"); };
    const auto some_length = [](unsigned long length) { return std::string(length == 0 ? "none" : "some"); };
    Contest("textkit::PageText", kind, size, page.size(), [] { return std::string("some"); })
        .Add(
            "ours", [&page] { return [&page] { return textkit::PageText(page); }; }, some_text)
        .Add("fixed", FixedPageText(page), some_length);
    Contest("textkit::DecodeReferences", kind, size, page.size(), [] { return std::string("some"); })
        .Add(
            "ours", [&page] { return [&page] { return textkit::DecodeReferences(page); }; }, some_text)
        .Add("fixed", FixedPageText(page), some_length);
}

}  // namespace

void bench::SetUpContests() {
    for (const Kind kind : {Kind::kHtml, Kind::kChinese, Kind::kEnglish})
        for (const std::size_t size : kSizes)
            if (size > 16) AddPages(kind, size);
}
