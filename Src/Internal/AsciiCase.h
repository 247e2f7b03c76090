#ifndef UTILITY_INTERNAL_ASCIICASE_H
#define UTILITY_INTERNAL_ASCIICASE_H

#include <algorithm>
#include <string_view>

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

// Whether the texts are the same but for the case of ASCII letters.
inline bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToAsciiLower(ToByte(x)) == ToAsciiLower(ToByte(y)); });
}

}  // namespace utility::internal

#endif
