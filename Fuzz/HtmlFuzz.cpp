// HTML to text, percent escapes, and the page text of the tool.

#include <STLCodeTrans.h>

#include "Decoding.h"
#include "FuzzSupport.h"
#include "Markup.h"
#include "Splitting.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t capacity = input.Number(64);
    const std::string html = input.Rest();
    fuzz::Exact page(html), text((capacity == 0 ? html.size() : capacity) + 6);
    unsigned long length = capacity;
    FUZZ_CHECK(vHtmlToText(page.get(), html.size(), text.get(), length) == 0);
    FUZZ_CHECK(length < text.size() && text.get()[length] == '\0' && std::strlen(text.get()) == length);

    fuzz::Exact decoded(html.size() + 1);
    int decoded_length = 0;
    iURIDecode(page.get(), static_cast<int>(html.size()), decoded.get(), decoded_length);
    FUZZ_CHECK(decoded_length >= 0 && static_cast<std::size_t>(decoded_length) <= html.size());

    for (const auto encoding :
         {pagetext::Encoding::kUtf8, pagetext::Encoding::kGbk, pagetext::Encoding::kUtf16Le}) {
        const std::string utf8 = pagetext::Decode(html, encoding).text;
        FUZZ_CHECK(pagetext::IsValidUtf8(utf8));
        const std::string clean = pagetext::MarkupToText(utf8);
        FUZZ_CHECK(pagetext::IsValidUtf8(clean));
        std::size_t bytes = 0;
        for (const auto sentence : pagetext::Sentences(clean)) bytes += sentence.size();
        FUZZ_CHECK(bytes <= clean.size());
        for (const std::string& token : pagetext::Tokens(clean)) FUZZ_CHECK(pagetext::IsValidUtf8(token));
    }
    return 0;
}
