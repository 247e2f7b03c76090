#ifndef PAGETEXT_DECODING_H
#define PAGETEXT_DECODING_H

// From the bytes of a page to UTF-8 text.

#include <cstddef>
#include <string>
#include <string_view>

namespace pagetext {

enum class Encoding { kUnknown, kAscii, kUtf8, kGbk, kBig5, kUtf16Le, kUtf16Be, kUtf32 };

// "utf-8", "gbk" and so on; "unknown" where nothing was decided.
const char* NameOf(Encoding encoding);

// The encoding of a page: a byte-order mark first, then the detector, then a charset that the page declares where the
// detector is undecided. Pages without any byte above 7F are ASCII. Needs the loaded code maps.
Encoding DetectEncoding(std::string_view bytes);

struct Decoded {
    std::string text;              // valid UTF-8 without a byte-order mark; NUL bytes of the page stay NUL
    std::size_t replaced = 0;      // how often U+FFFD stands for what has no character
    std::size_t gb18030_four = 0;  // how many of those are four-byte characters of GB18030
};

// Whether Decode knows the encoding; kUtf16Be and kUtf32 are recognised, but not decoded.
bool IsSupported(Encoding encoding);

// Decodes a page. Malformed bytes give U+FFFD each, by the practice of the Encoding Standard: an ASCII byte behind a
// lead byte that it does not belong to stays text. kUnknown is read as UTF-8 where the bytes are valid UTF-8, else as
// GBK. One pass.
Decoded Decode(std::string_view bytes, Encoding encoding);

bool IsValidUtf8(std::string_view bytes);

// Length in bytes of the well-formed UTF-8 sequence at the start of `text`; 0 where there is none.
std::size_t Utf8SequenceLength(std::string_view text);

// Text as GBK; what GBK lacks becomes a decimal reference, "&#169;", and is counted in `references`.
std::string EncodeGbk(std::string_view utf8_text, std::size_t& references);

void AppendCodePoint(std::string& utf8_text, unsigned long code_point);

// What stands in a text for a character that could not be read, U+FFFD.
inline constexpr char kReplacement[] = "\xEF\xBF\xBD";

}  // namespace pagetext

#endif
