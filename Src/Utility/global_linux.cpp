#include "Utility/global_linux.h"

#include <algorithm>
#include <charconv>

#include "Internal/AsciiCase.h"
#include "Internal/Bytes.h"

namespace {

constexpr int kMostDigits = 11;  // of the lowest value, in decimal with its sign and in octal

// Folds every byte of a text with `fold`, a case mapping of Internal/AsciiCase.h.
template <typename Fold>
char* FoldText(char* text, Fold fold) {
    for (char* c = text; *c != '\0'; ++c) *c = utility::internal::ToChar(fold(utility::internal::ToByte(*c)));
    return text;
}

}  // namespace

// Under the conditions of the header: a second function of the C library's name and arguments does not
// compile.

#if !defined(_WIN32) && !defined(__QNX__) && !defined(__NEWLIB__)

char* itoa(int value, char* buffer, int radix) {
    char* const end = buffer + kMostDigits;
    const std::to_chars_result written = radix == 8 || radix == 16
                                             ? std::to_chars(buffer, end, static_cast<unsigned>(value), radix)
                                             : std::to_chars(buffer, end, value);
    *written.ptr = '\0';
    return buffer;
}

#if !defined(__HAIKU__)

char* strlwr(char* text) {
    return FoldText(text, utility::internal::ToAsciiLower);
}

char* strupr(char* text) {
    return FoldText(text, utility::internal::ToAsciiUpper);
}

#endif
#endif

#if !defined(_WIN32) && !defined(__QNX__)

char* strrev(char* text) {
    std::reverse(text, text + strlen(text));
    return text;
}

#endif
