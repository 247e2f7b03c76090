#include "Utility/ChineseText/TextTidying.h"

#include <array>
#include <cstring>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterListIndex.h"
#include "Internal/EncodedList.h"
#include "Internal/FoldingLists.h"
#include "Internal/FoldingRuns.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::CharacterFolder;
using utility::internal::CharacterListIndex;
using utility::internal::FoldInPlace;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::kNarrowMarks;
using utility::internal::kWideMarkText;
using utility::internal::PairIndex;
using utility::internal::PairTable;
using utility::internal::ToByte;
using utility::internal::ToChar;
using utility::internal::Utf8;

constexpr ByteSet kWhiteSpace(" \t\r\n");

// Character by character the half-width form of each stands in the list behind it; but the lookup goes by byte offset /
// 2 into the stored UTF-8, which agrees with that for the first one only.
constexpr auto kFullWidth = Utf8(kWideMarkText);
constexpr std::string_view kHalfWidth = kNarrowMarks;
constexpr CharacterListIndex kFullWidthUnits(kFullWidth);

// A place in the full-width list as its half-width byte; NUL for none, and where the shorter list has ended.
constexpr char HalfWidthAt(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= kHalfWidth.size()) return '\0';
    return kHalfWidth[static_cast<std::size_t>(index)];
}

// The ASCII form of each pair, or NUL where it has none.
constexpr PairTable<char> kHalfWidthPairs = [] {
    PairTable<char> forms{};
    for (std::size_t offset = 0; offset + 1 < kFullWidth.size(); offset += 2) {
        const unsigned char lead = ToByte(kFullWidth[offset]), trail = ToByte(kFullWidth[offset + 1]);
        if (lead >= 0x80) forms[PairIndex(lead, trail)] = HalfWidthAt(kFullWidthUnits.FindPair(lead, trail));
    }
    for (unsigned char ascii = 0; ascii < 0x80; ++ascii) {
        constexpr unsigned char kFullWidthLead = 0xA3;
        const auto trail = static_cast<unsigned char>(ascii | 0x80);
        if (IsAsciiDigit(ascii) || IsAsciiLetter(ascii)) forms[PairIndex(kFullWidthLead, trail)] = ToChar(ascii);
    }
    return forms;
}();

// What single bytes become: themselves, but for some lead bytes with nothing behind them.
constexpr std::array<char, 256> kHalfWidthSingles = [] {
    std::array<char, 256> forms{};
    for (unsigned value = 0; value < 256; ++value) {
        const char half = HalfWidthAt(kFullWidthUnits.FindByte(static_cast<unsigned char>(value)));
        forms[value] = half != '\0' ? half : ToChar(value);
    }
    return forms;
}();

}  // namespace

bool QuanJiao2BanJiao(char* text) {
    const std::size_t length = std::strlen(text);
    if (length == 0) return false;
    char& last = text[length - 1];
    const char last_before = last;
    char* const end = FoldInPlace(text, length, CharacterFolder(kHalfWidthPairs, kHalfWidthSingles));
    *end = '\0';
    // A pair leaves a byte of its two; a lone lead byte, which stands last, leaves another one.
    return end != text + length || last != last_before;
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
