#include "Utility/ChineseText/CharacterClass.h"

#include <cstdint>
#include <cstring>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::IsAscii;
using utility::internal::IsAsciiLetter;
using utility::internal::ToByte;

constexpr unsigned char kSymbolLead = 0xA1;
constexpr unsigned char kIndexLead = 0xA2;
constexpr unsigned char kFullWidthLead = 0xA3;
constexpr ByteSet kAsciiDelimiters("\t\r \n.,(){}[]:;\"'<>?/~@#$%^&*()_-+=");

constexpr bool IsChineseLead(unsigned char byte) {
    return byte >= 0xB0 && byte <= 0xF7;
}

constexpr bool IsDelimiterLead(unsigned char byte) {
    return byte == kSymbolLead || byte == kFullWidthLead;
}

// Behind the run of whole two-byte characters for which `accepts(lead, trail)` holds.
template <typename Predicate>
const unsigned char* SkipPairs(const unsigned char* text, Predicate accepts) {
    while (text[0] != 0 && text[1] != 0 && accepts(text[0], text[1])) text += 2;
    return text;
}

}  // namespace

const char* CC_Find(const char* list, const char* ch) {
    if (*ch == '\0') return nullptr;
    const char* const found = std::strstr(list, ch);
    return found != nullptr && (found - list) % 2 == 0 ? found : nullptr;
}

std::size_t GetCCPrefix(unsigned char* text) {
    std::size_t length = 0;
    for (; IsChineseLead(text[length]); length += 2) {
        if (text[length + 1] == 0) return length + 2;  // a lone lead byte counts for two
    }
    return length;
}

bool IsAllChinese(unsigned char* text) {
    return *SkipPairs(text, [](unsigned char lead, unsigned char) { return IsChineseLead(lead); }) == 0;
}

bool IsAllNonChinese(unsigned char* text) {
    while (*text != 0) {
        if (IsChineseLead(*text)) return false;
        text += *text > 0x80 && text[1] != 0 ? 2 : 1;
    }
    return true;
}

bool IsAllSingleByte(unsigned char* text, unsigned long length) {
    constexpr std::uint64_t kTopBits = 0x8080808080808080;
    if (length == 0) length = std::strlen(reinterpret_cast<const char*>(text));
    std::size_t pos = 0;
    for (std::uint64_t word; length - pos >= sizeof word; pos += sizeof word) {
        std::memcpy(&word, text + pos, sizeof word);
        if ((word & kTopBits) != 0) return false;
    }
    while (pos < length && IsAscii(text[pos])) ++pos;
    return pos == length;
}

bool IsAllIndex(unsigned char* text) {
    const unsigned char* rest = SkipPairs(text, [](unsigned char lead, unsigned char) { return lead == kIndexLead; });
    while (IsAsciiLetter(*rest)) ++rest;
    return *rest == 0;
}

bool IsAllLetter(unsigned char* text) {
    // The trail byte of a full-width letter is the ASCII letter with the top bit set; 20 more makes it a small one.
    constexpr unsigned kSmallA = 0x80 | 'a', kLetters = 26;
    while (text[0] == kFullWidthLead && (text[1] | 0x20u) - kSmallA < kLetters) text += 2;
    return *text == 0;
}

bool IsAllDelimiter(unsigned char* text) {
    return *SkipPairs(text, [](unsigned char lead, unsigned char) { return IsDelimiterLead(lead); }) == 0;
}

bool IsDelimiter(const char* character) {
    if (character[0] == '\0') return false;
    if (character[1] == '\0') return kAsciiDelimiters.Contains(character[0]);
    return character[2] == '\0' && IsDelimiterLead(ToByte(character[0]));
}
