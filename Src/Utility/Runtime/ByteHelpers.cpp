#include "Utility/Runtime/ByteHelpers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Internal/AsciiCase.h"
#include "Internal/Bytes.h"

namespace {

using utility::internal::IsAscii;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::ToAsciiLower;
using utility::internal::ToAsciiUpper;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr char ToLowerLetter(char c) {
    return ToChar(ToAsciiLower(ToByte(c)));
}

// The same whether plain char is signed or not.
constexpr std::int32_t SignedValue(char c) {
    return static_cast<signed char>(c);
}

}  // namespace

char GetUpperLetter(char byte) {
    return ToChar(ToAsciiUpper(ToByte(byte)));
}

char GetLowerLetter(char byte) {
    return ToLowerLetter(byte);
}

bool isLetter(char byte) {
    return IsAsciiLetter(ToByte(byte));
}

bool isDigit(char byte) {
    return IsAsciiDigit(ToByte(byte));
}

void toLower(char* text, unsigned int length) {
    std::transform(text, text + length, text, ToLowerLetter);
}

void toLower(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), ToLowerLetter);
}

unsigned int deleteChar(char* text, unsigned int length, char byte) {
    if (text == nullptr) return 0;
    char* const kept_end = std::remove(text, text + length, byte);
    std::fill(kept_end, text + length, '\0');
    return static_cast<unsigned int>(kept_end - text);
}

unsigned int countChar(char const* text, unsigned int length, unsigned int code) {
    unsigned int count = 0;
    for (std::size_t pos = 0; pos < length; ++pos) {
        std::int32_t character = SignedValue(text[pos]);
        if (!IsAscii(ToByte(text[pos])) && pos + 1 < length) character = character * 256 + SignedValue(text[++pos]);
        if (static_cast<std::uint32_t>(character) == code) ++count;
    }
    return count;
}

std::string replaceChar(std::string const& text, char byte, char const* replacement) {
    const std::string_view inserted(replacement);
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), byte));
    std::string replaced;
    replaced.reserve(text.size() - count + count * inserted.size());
    for (const char c : text) {
        if (c == byte) {
            replaced += inserted;
        } else {
            replaced += c;
        }
    }
    return replaced;
}
