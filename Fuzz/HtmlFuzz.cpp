// HTML to text, and percent escapes.

#include "FuzzSupport.h"

namespace {

std::string TextOf(const std::string& html, unsigned long limit) {
    fuzz::Exact page(html), text((limit == 0 ? html.size() : limit) + 6);
    unsigned long length = limit;
    FUZZ_CHECK(vHtmlToText(page.get(), html.size(), text.get(), length) == 0);
    FUZZ_CHECK(text.Text().size() == length && page.Text() == html.substr(0, html.find('\0')));
    return text.Text();
}

void CheckEscapes(const std::string& uri) {
    fuzz::Exact input(uri), decoded(uri.size());
    int length = 0, length_in_place = 0;
    FUZZ_CHECK(iURIDecode(input.get(), static_cast<int>(uri.size()), decoded.get(), length) == 0);
    FUZZ_CHECK(length >= 0 && static_cast<std::size_t>(length) <= uri.size());
    iURIDecode(input.get(), static_cast<int>(uri.size()), input.get(), length_in_place);
    FUZZ_CHECK(length == length_in_place);
    FUZZ_CHECK(std::memcmp(input.get(), decoded.get(), static_cast<std::size_t>(length)) == 0);
    const auto escapes = static_cast<std::size_t>(std::count(uri.begin(), uri.end(), '%'));
    FUZZ_CHECK(static_cast<std::size_t>(length) + 2 * escapes >= uri.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t limit = input.Number(64);
    const std::string html = input.Rest(), whole = TextOf(html, 0);
    FUZZ_CHECK(whole.find("  ") == std::string::npos && whole.substr(0, 1) != " ");
    const std::string part = TextOf(html, limit);
    FUZZ_CHECK(part == whole.substr(0, part.size()) || part.back() == ' ');
    FUZZ_CHECK(limit == 0 || part.size() <= limit + 5);
    CheckEscapes(html);
    return 0;
}
