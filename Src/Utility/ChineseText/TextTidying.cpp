#include "Utility/ChineseText/TextTidying.h"

#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterListIndex.h"
#include "Internal/CharacterSet.h"
#include "Internal/CharacterStep.h"
#include "Internal/EncodedList.h"
#include "Internal/FoldingLists.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::CharacterListIndex;
using utility::internal::DoubleByteStep;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::kNarrowMarks;
using utility::internal::kSetOf;
using utility::internal::kWideMarkText;
using utility::internal::ToByte;
using utility::internal::ToChar;
using utility::internal::Utf8;

constexpr ByteSet kWhiteSpace(" \t\r\n");

// Character by character the half-width form of each stands in the list behind it; but the lookup goes by byte offset / 2
// into the stored UTF-8, which agrees with that for the first one only.
constexpr auto kFullWidth = Utf8(kWideMarkText);
constexpr std::string_view kHalfWidth = kNarrowMarks;
constexpr CharacterListIndex kFullWidthUnits(kFullWidth);

// A place in the full-width list as its half-width byte; NUL for none, and where the shorter list has ended.
constexpr char HalfWidthAt(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= kHalfWidth.size()) return '\0';
    return kHalfWidth[static_cast<std::size_t>(index)];
}

// The ASCII form of the character of `step` bytes, or NUL when it has none.
char HalfWidthForm(const char* character, std::size_t step) {
    constexpr unsigned char kFullWidthLead = 0xA3;
    const unsigned char lead = ToByte(character[0]);
    if (step == 1) return HalfWidthAt(kFullWidthUnits.FindByte(lead));
    const unsigned char trail = ToByte(character[1]);
    if (lead == kFullWidthLead && trail >= 0x80) {
        const auto ascii = static_cast<unsigned char>(trail - 0x80);
        if (IsAsciiDigit(ascii) || IsAsciiLetter(ascii)) return ToChar(ascii);
    }
    // Most characters are in no list, and the set tells that sooner.
    if (!kSetOf<kFullWidth>.Contains({lead, trail})) return '\0';
    return HalfWidthAt(kFullWidthUnits.FindPair(lead, trail));
}

}  // namespace

bool QuanJiao2BanJiao(char* text) {
    bool replaced = false;
    const char* read = text;
    char* write = text;
    while (const std::size_t step = DoubleByteStep(read)) {
        if (const char half = HalfWidthForm(read, step); half != '\0') {
            *write++ = half;
            replaced = true;
        } else {
            *write++ = read[0];
            if (step == 2) *write++ = read[1];
        }
        read += step;
    }
    *write = '\0';
    return replaced;
}

void TextStandard(const char* source, std::string& tidied) {
    std::string_view rest(source);
    while (!rest.empty() && (rest.back() == '\r' || rest.back() == '\n')) rest.remove_suffix(1);
    tidied.clear();
    tidied.reserve(rest.size());
    for (; !rest.empty(); rest.remove_prefix(1)) {
        const bool drop = kWhiteSpace.Contains(rest[0]) && !(!tidied.empty() && IsAsciiLetter(ToByte(tidied.back()))) &&
                          !(rest.size() > 1 && IsAsciiLetter(ToByte(rest[1])));
        if (!drop) tidied += rest[0];
    }
}

int TextIndent(std::string& text, unsigned int count, char fill) {
    text += "\r\n";
    text.append(count, fill);
    return static_cast<int>(count);
}

std::size_t strlen_nospace(const char* text) {
    std::size_t count = 0;
    for (; *text != '\0'; ++text) count += !kWhiteSpace.Contains(*text);
    return count;
}

char* StrNormalize(char* text) {
    if (text == nullptr) return nullptr;
    char* write = text;
    for (const char* read = text; *read != '\0'; ++read) {
        if (!kWhiteSpace.Contains(*read)) {
            *write++ = *read;
        } else if (write != text && write[-1] != ' ') {
            *write++ = ' ';
        }
    }
    if (write != text && write[-1] == ' ') --write;
    *write = '\0';
    return text;
}
