#ifndef PAGETEXT_DECODING_H
#define PAGETEXT_DECODING_H

// From the bytes of a page to UTF-8 text: what a page knows of its encoding beyond its bytes.

#include <TextKit.h>

#include <string_view>

namespace pagetext {

enum class Encoding { kUnknown, kAscii, kUtf8, kGbk, kBig5, kUtf16Le, kUtf16Be, kUtf32 };

// "utf-8", "gbk" and so on; "unknown" where nothing was decided.
const char* NameOf(Encoding encoding);

// The encoding of a page: a byte-order mark first, then the detector, then a charset that the page declares where the
// detector is undecided. Pages without any byte above 7F are ASCII.
Encoding DetectEncoding(std::string_view bytes, const textkit::CodeMaps& maps = {});

// Whether Decode knows the encoding; kUtf16Be and kUtf32 are recognised, but not decoded.
bool IsSupported(Encoding encoding);

// Decodes a page. kUnknown is read as UTF-8 where the bytes are valid UTF-8, else as GBK.
textkit::Decoded Decode(std::string_view bytes, Encoding encoding, const textkit::CodeMaps& maps = {});

}  // namespace pagetext

#endif
