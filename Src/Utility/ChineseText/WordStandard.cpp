#include "Utility/ChineseText/WordStandard.h"

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterStep.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::DoubleByteStep;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::IsAsciiUpper;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr bool IsAsciiAlphanumeric(unsigned char byte) {
    return IsAsciiLetter(byte) || IsAsciiDigit(byte);
}

constexpr char ToAsciiLower(unsigned char byte) {
    return ToChar(IsAsciiUpper(byte) ? byte + ('a' - 'A') : byte);
}

// What the ASCII byte `byte` in front of `next` becomes; NUL when it is dropped. So is a lone lead byte.
char SingleByteForm(unsigned char byte, unsigned char next) {
    constexpr ByteSet kKept("+-{};\r\n");
    const bool keep = IsAsciiAlphanumeric(byte) || kKept.Contains(byte) || (byte == ' ' && IsAsciiAlphanumeric(next));
    return keep ? ToAsciiLower(byte) : '\0';
}

// The single byte that the two-byte character becomes; NUL when it stays as it is.
char TwoByteForm(unsigned char lead, unsigned char trail) {
    constexpr unsigned char kFullWidthLead = 0xA3;
    constexpr unsigned char kFirstMarkFolded = 0xBB;
    if (lead != kFullWidthLead || trail < 0x80) return '\0';
    const auto ascii = static_cast<unsigned char>(trail - 0x80);
    if (IsAsciiAlphanumeric(ascii)) return ToAsciiLower(ascii);
    return trail >= kFirstMarkFolded ? ';' : '\0';
}

}  // namespace

char* WordStandard(char* word) {
    const char* read = word;
    char* write = word;
    while (const std::size_t step = DoubleByteStep(read)) {
        const unsigned char first = ToByte(read[0]);
        const unsigned char second = ToByte(read[1]);
        const char form = step == 2 ? TwoByteForm(first, second) : SingleByteForm(first, second);
        if (form != '\0') {
            *write++ = form;
        } else if (step == 2) {
            *write++ = ToChar(first);
            *write++ = ToChar(second);
        }
        read += step;
    }
    *write = '\0';
    return word;
}
