#ifndef UTILITY_INTERNAL_CHARACTERSTEP_H
#define UTILITY_INTERNAL_CHARACTERSTEP_H

// Length in bytes of the character at the start of a NUL-terminated text. Small enough to vanish in a
// caller's loop; the public steppers are made of these. Every length is 0 at the NUL, and no step reads or
// leads past it.

#include <cstddef>

#include "Internal/Bytes.h"

namespace utility::internal {

// Double-byte text: 2 for a byte with its top bit set and a byte after it, else 1.
constexpr std::size_t DoubleByteStep(const char* text) {
    if (text[0] == '\0') return 0;
    return IsAscii(ToByte(text[0])) || text[1] == '\0' ? 1 : 2;
}

// What a lead byte announces, in the scheme of RFC 2279 with up to six bytes; 1 for a continuation byte.
constexpr std::size_t Utf8Announced(unsigned char lead) {
    if (lead < 0xC0) return lead == 0 ? 0 : 1;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    if (lead < 0xF8) return 4;
    return lead < 0xFC ? 5 : 6;
}

// UTF-8: what the lead byte announces, cut at the NUL; the bytes behind the lead are not otherwise examined.
constexpr std::size_t Utf8Step(const char* text) {
    const std::size_t announced = Utf8Announced(ToByte(text[0]));
    std::size_t step = 0;
    while (step < announced && text[step] != '\0') ++step;
    return step;
}

}  // namespace utility::internal

#endif
