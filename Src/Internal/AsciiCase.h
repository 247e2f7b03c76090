#ifndef UTILITY_INTERNAL_ASCIICASE_H
#define UTILITY_INTERNAL_ASCIICASE_H

#include "Internal/Bytes.h"

namespace utility::internal {

constexpr unsigned char ToAsciiLower(unsigned char byte) {
    return IsAsciiUpper(byte) ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

constexpr unsigned char ToAsciiUpper(unsigned char byte) {
    return IsAsciiLower(byte) ? static_cast<unsigned char>(byte - ('a' - 'A')) : byte;
}

// The order of strcasecmp in the C locale, whatever the locale is: negative, 0 or positive.
constexpr int CompareIgnoringAsciiCase(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int difference = ToAsciiLower(ToByte(*a)) - ToAsciiLower(ToByte(*b));
        if (difference != 0 || *a == '\0') return difference;
    }
}

}  // namespace utility::internal

#endif
