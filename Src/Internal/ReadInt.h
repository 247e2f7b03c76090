#ifndef UTILITY_INTERNAL_READINT_H
#define UTILITY_INTERNAL_READINT_H

#include <cstdlib>

#include "Internal/Bytes.h"

namespace utility::internal {

// The number that `text` starts with, as atoi reads it. Where the standard leaves atoi undefined, beyond the range of
// int, this keeps the low 32 bits of what strtol gives, as the usual C libraries do.
inline int ReadInt(const char* text) {
    // Up to nine digits behind at most a minus mean the same everywhere; the rest is the C library's, which knows what else
    // counts as white space in the locale.
    constexpr int kSafeDigits = 9;
    const bool negative = *text == '-';
    const char* const digits = text + negative;
    int value = 0;
    for (int i = 0; i <= kSafeDigits; ++i) {
        if (!IsAsciiDigit(ToByte(digits[i]))) {
            if (i == 0) break;
            return negative ? -value : value;
        }
        if (i < kSafeDigits) value = value * 10 + (digits[i] - '0');
    }
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

}  // namespace utility::internal

#endif
