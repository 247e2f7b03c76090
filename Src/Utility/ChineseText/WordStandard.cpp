#include "Utility/ChineseText/WordStandard.h"

#include <array>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterStep.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::DoubleByteStep;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::ToAsciiLower;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr bool IsAsciiAlphanumeric(unsigned char byte) {
    return IsAsciiLetter(byte) || IsAsciiDigit(byte);
}

// What a single byte becomes, and what a blank in front of it does; NUL where they are dropped. So is a lone lead byte.
struct ByteForms {
    std::array<unsigned char, 256> own{}, of_blank_in_front{};
};

constexpr ByteForms kByteForms = [] {
    constexpr ByteSet kKept("+-{};\r\n");
    ByteForms forms;
    for (unsigned value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        if (IsAsciiAlphanumeric(byte) || kKept.Contains(byte)) forms.own[value] = ToAsciiLower(byte);
        if (IsAsciiAlphanumeric(byte)) forms.of_blank_in_front[value] = ' ';
    }
    return forms;
}();

// Without a branch, as no processor would foresee it.
char SingleByteForm(unsigned char byte, unsigned char next) {
    const unsigned if_blank = 0 - static_cast<unsigned>(byte == ' ');
    return ToChar(kByteForms.own[byte] | (kByteForms.of_blank_in_front[next] & if_blank));
}

// The single byte that the two-byte character becomes; NUL when it stays as it is.
char TwoByteForm(unsigned char lead, unsigned char trail) {
    constexpr unsigned char kFullWidthLead = 0xA3;
    constexpr unsigned char kFirstMarkFolded = 0xBB;
    if (lead != kFullWidthLead || trail < 0x80) return '\0';
    const auto ascii = static_cast<unsigned char>(trail - 0x80);
    if (IsAsciiAlphanumeric(ascii)) return ToChar(ToAsciiLower(ascii));
    return trail >= kFirstMarkFolded ? ';' : '\0';
}

}  // namespace

char* WordStandard(char* word) {
    const char* read = word;
    char* write = word;
    while (const std::size_t step = DoubleByteStep(read)) {
        const unsigned char first = ToByte(read[0]);
        const unsigned char second = ToByte(read[1]);
        if (step == 1) {
            // Written in any case, and then kept or not: no processor would foresee the branch.
            const char form = SingleByteForm(first, second);
            *write = form;
            write += form != '\0';
        } else if (const char form = TwoByteForm(first, second); form != '\0') {
            *write++ = form;
        } else {
            *write++ = ToChar(first);
            *write++ = ToChar(second);
        }
        read += step;
    }
    *write = '\0';
    return word;
}
