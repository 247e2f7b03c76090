// TextKit.h: encodings there and back, pages, sentences.

#include <TextKit.h>

#include "FuzzSupport.h"

namespace {

using textkit::Encoding;

void CheckEncoding(std::string_view bytes, Encoding encoding) {
    const textkit::Decoded decoded = textkit::Decode(bytes, encoding);
    FUZZ_CHECK(textkit::IsValidUtf8(decoded.text));
    FUZZ_CHECK((decoded.replaced == 0) == (decoded.first_replaced == textkit::kNoPosition));
    FUZZ_CHECK(decoded.replaced == 0 || decoded.first_replaced < bytes.size());
    FUZZ_CHECK(decoded.gb18030_four_byte <= decoded.replaced);
    const textkit::Encoded encoded = textkit::Encode(decoded.text, encoding);
    const bool has_mark = (encoding == Encoding::kUtf8 && bytes.substr(0, 3) == "\xEF\xBB\xBF") ||
                          (encoding == Encoding::kUtf16Le && bytes.substr(0, 2) == "\xFF\xFE") ||
                          (encoding == Encoding::kUtf16Be && bytes.substr(0, 2) == "\xFE\xFF");
    if (decoded.replaced == 0 && !has_mark && encoding != Encoding::kBig5) FUZZ_CHECK(encoded.bytes == bytes);

    // The other way: what was encoded without loss is decoded to what it was.
    const textkit::Encoded from_utf8 = textkit::Encode(bytes, encoding, textkit::Unmappable::kNumericReference);
    FUZZ_CHECK((from_utf8.replaced == 0) == (from_utf8.first_replaced == textkit::kNoPosition));
    if (from_utf8.replaced != 0 || bytes.substr(0, 3) == "\xEF\xBB\xBF") return;
    const textkit::Decoded back = textkit::Decode(from_utf8.bytes, encoding);
    FUZZ_CHECK(back.text == bytes && back.replaced == 0);
}

void CheckPage(std::string_view page) {
    const std::string text = textkit::PageText(page);
    FUZZ_CHECK(textkit::IsValidUtf8(text) && text.find("\n\n\n") == std::string::npos);
    FUZZ_CHECK(text.empty() || (text.front() != '\n' && text.back() != '\n'));
    const std::string decoded = textkit::DecodeReferences(page);
    if (page.find('&') == std::string_view::npos) FUZZ_CHECK(decoded == page);
    std::size_t pos = 0;
    for (const std::string_view sentence : textkit::Sentences(text)) {
        pos = text.find(sentence, pos);
        FUZZ_CHECK(pos != std::string::npos);
        pos += sentence.size();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Exact exact(size);
    if (size != 0) std::memcpy(exact.get(), data, size);
    const std::string_view bytes(exact.get(), size);
    for (const auto encoding :
         {Encoding::kUtf8, Encoding::kGbk, Encoding::kBig5, Encoding::kUtf16Le, Encoding::kUtf16Be}) {
        CheckEncoding(bytes, encoding);
    }
    const textkit::Detection detection = textkit::Detect(bytes);
    FUZZ_CHECK(detection.confidence >= 0 && detection.confidence <= 1);
    FUZZ_CHECK((detection.encoding == Encoding::kUnknown) <= (detection.confidence == 0));
    const textkit::Decoded decoded = textkit::Decode(bytes, Encoding::kUnknown);
    FUZZ_CHECK(textkit::IsValidUtf8(decoded.text));
    CheckPage(bytes);
    return 0;
}
