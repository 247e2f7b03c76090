#include "Utility/ChineseText/EnglishText.h"

#include <cstddef>
#include <cstring>

#include "Internal/Bytes.h"

namespace {

using utility::internal::IsAscii;
using utility::internal::IsAsciiLetter;
using utility::internal::ToByte;

// Two high bytes are let through: A1, the lead byte of GBK's dashes and quotation marks, which stand in
// English text too, and B1.
constexpr bool IsForeign(unsigned char byte) {
    return !IsAscii(byte) && byte != 0xA1 && byte != 0xB1;
}

}  // namespace

bool IsEnglishText(const char* text) {
    constexpr std::size_t kSamples = 10;
    if (text == nullptr || *text == '\0') return false;
    const std::size_t length = std::strlen(text);
    std::size_t letters = 0;
    for (std::size_t i = 0; i < kSamples; ++i) {
        const unsigned char sample = ToByte(text[i * length / kSamples]);
        if (IsForeign(sample)) return false;
        if (IsAsciiLetter(sample)) ++letters;
    }
    if (length > 3 && (IsForeign(ToByte(text[1])) || IsForeign(ToByte(text[length - 2])))) return false;
    return letters * 2 >= kSamples;
}
