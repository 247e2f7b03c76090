// HTML to text, percent escapes, and what TextKit.h and the tool make of pages.

#include <STLCodeTrans.h>
#include <TextKit.h>

#include "FuzzSupport.h"
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

    const std::string_view bytes(page.get(), html.size());
    FUZZ_CHECK(textkit::IsValidUtf8(textkit::PageText(bytes)));
    for (const auto encoding :
         {textkit::Encoding::kUtf8, textkit::Encoding::kGbk, textkit::Encoding::kBig5, textkit::Encoding::kUtf16Le}) {
        const textkit::Decoded page_text = textkit::Decode(bytes, encoding);
        FUZZ_CHECK(textkit::IsValidUtf8(page_text.text));
        FUZZ_CHECK(page_text.first_replaced < bytes.size() || page_text.replaced == 0);
        textkit::Encode(bytes, encoding, textkit::Unmappable::kNumericReference);
        const std::string clean = textkit::PageText(page_text.text);
        FUZZ_CHECK(textkit::IsValidUtf8(clean));
        std::size_t sentence_bytes = 0;
        for (const auto sentence : pagetext::Sentences(clean)) sentence_bytes += sentence.size();
        FUZZ_CHECK(sentence_bytes <= clean.size());
        for (const std::string& token : pagetext::Tokens(clean)) FUZZ_CHECK(textkit::IsValidUtf8(token));
    }
    return 0;
}
