#ifndef UTILITY_INTERNAL_LENIENTUTF8_H
#define UTILITY_INTERNAL_LENIENTUTF8_H

// UTF-8 up to U+FFFF, read without a look at whether it is well-formed.

#include <cstddef>
#include <cstring>

#include "Internal/Bytes.h"

namespace utility::internal {

constexpr wchar_t TwoByteCharacter(unsigned lead, unsigned second) {
    return static_cast<wchar_t>((lead & 0x1F) << 6 | (second & 0x3F));
}

constexpr wchar_t ThreeByteCharacter(unsigned lead, unsigned second, unsigned third) {
    return static_cast<wchar_t>((lead & 0x0F) << 12 | (second & 0x3F) << 6 | (third & 0x3F));
}

// Decodes one character, or nothing, of the bytes that end at `end`; there is one.
[[gnu::always_inline]] inline void DecodeOneLeniently(const char*& text, const char* end, wchar_t*& wide) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
    const std::ptrdiff_t left = end - text;
    if (IsAscii(bytes[0])) {
        *wide++ = bytes[0];
        text += 1;
    } else if ((bytes[0] & 0xE0) == 0xC0 && left > 1) {
        *wide++ = TwoByteCharacter(bytes[0], bytes[1]);
        text += 2;
    } else if ((bytes[0] & 0xF0) == 0xE0 && left > 2) {
        *wide++ = ThreeByteCharacter(bytes[0], bytes[1], bytes[2]);
        text += 3;
    } else {
        text += 1;
    }
}

// The start of NUL-terminated text behind its mark, if it has one.
inline const char* SkipByteOrderMark(const char* utf8) {
    return std::strncmp(utf8, "\xEF\xBB\xBF", 3) == 0 ? utf8 + 3 : utf8;
}

}  // namespace utility::internal

#endif
