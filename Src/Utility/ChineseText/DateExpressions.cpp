#include "Utility/ChineseText/DateExpressions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Internal/CharacterSet.h"
#include "Internal/EncodedList.h"
#include "Internal/Numerals.h"
#include "Utility/ChineseText/NumberExpressions.h"

namespace {

using namespace utility::internal;

// All stored as UTF-8 although they are searched for two-byte units.
constexpr auto kYearDigits = Utf8(kYearDigitText);
constexpr auto kLateYearDigits = Utf8(kLateYearDigitText);
constexpr auto kThousandsAndZeros = Utf8(kThousandOrZeroText);
constexpr auto kThousands = Utf8(kThousandText);
constexpr auto kDayDigits = Utf8(kDayDigitText);
static_assert(kYearDigits.size() == 69 && kLateYearDigits.size() == 15 && kThousandsAndZeros.size() == 15);
static_assert(kThousands.size() == 6 && kDayDigits.size() == 90);

bool IsAsciiText(const char* text, std::size_t length) {
    return std::all_of(text, text + length, [](char c) { return IsAscii(ToByte(c)); });
}

}  // namespace

bool IsYearTime(const char* word, int length) {
    if (length < 0) return false;
    const std::size_t size = length == 0 ? std::strlen(word) : static_cast<std::size_t>(length);
    // Half of a 32-bit size, which matters to words of four gigabytes.
    if (size >= 3 && kSetOf<kYearDigits>.Count(word, size) == static_cast<std::uint32_t>(size) / 2) return true;
    switch (size) {
        case 2:
            return (IsAsciiText(word, size) && word[0] > '4') || kSetOf<kThousands>.Count(word, size) == 1;
        case 4:
            return IsAsciiText(word, size) ||
                   (kSetOf<kLateYearDigits>.Contains({ToByte(word[0]), ToByte(word[1])}) && IsAllNum(word, size));
        case 8:
            return IsAllNum(word, size) || kSetOf<kThousandsAndZeros>.Count(word, size) == 2;
        default:
            return size >= 6 && IsAllNum(word, size);
    }
}

bool IsDayTime(const char* word, unsigned int length) {
    constexpr std::size_t kLongest = 6;
    const std::size_t size = length == 0 ? strnlen(word, kLongest + 1) : length;
    if (size > kLongest) return false;
    if (kSetOf<kDayDigits>.Count(word, size) == size / 2) return true;
    return size <= 2 && std::all_of(word, word + size, [](char c) { return IsAsciiDigit(ToByte(c)); });
}
