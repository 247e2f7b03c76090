#include "Utility/ChineseText/CharacterStepping.h"

#include <cstring>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterStep.h"

using utility::internal::ByteSet;
using utility::internal::DoubleByteStep;
using utility::internal::IsAscii;
using utility::internal::IsAsciiUpper;
using utility::internal::ToByte;
using utility::internal::TwoByteCode;
using utility::internal::Utf8Step;

std::size_t Getchar(const char* text, char* unit) {
    const std::size_t step = DoubleByteStep(text);
    *unit++ = text[0];
    if (step == 2) *unit++ = text[1];
    *unit = '\0';
    return step;
}

std::size_t Getchar(const char* text, int* code) {
    const std::size_t step = DoubleByteStep(text);
    const unsigned char lead = ToByte(text[0]);
    if (step == 0) {
        *code = -1;
    } else if (step == 1) {
        *code = IsAscii(lead) ? lead : lead - 0x100;
    } else {
        *code = static_cast<int>(TwoByteCode(lead, ToByte(text[1])));
    }
    return step;
}

std::size_t GetUTF8Char(const char* text, char* buffer) {
    const std::size_t step = Utf8Step(text);
    std::memcpy(buffer, text, step);
    buffer[step] = '\0';
    return step;
}

int GetCharCode(const char* text, unsigned long& position, unsigned long length) {
    const unsigned char lead = ToByte(text[position++]);
    if (!IsAscii(lead) && position != length) {
        return static_cast<int>(TwoByteCode(lead, ToByte(text[position++])));
    }
    return IsAsciiUpper(lead) ? lead + ('a' - 'A') : lead;
}

const char* sgets(const char* text, char* line) {
    constexpr ByteSet kLineBreaks("\r\n");
    if (text == nullptr) {
        *line = '\0';
        return nullptr;
    }
    const std::size_t length = std::strcspn(text, "\r\n");
    std::memcpy(line, text, length);
    line[length] = '\0';
    text += length;
    while (kLineBreaks.Contains(*text)) ++text;
    return *text == '\0' ? nullptr : text;
}

int CharStat(const char* text, unsigned long& single_byte, unsigned long& multi_byte, bool utf8) {
    constexpr ByteSet kWhiteSpace(" \t\r\n");
    unsigned long singles = 0, multis = 0;
    while (const std::size_t step = utf8 ? Utf8Step(text) : DoubleByteStep(text)) {
        if (step > 1) {
            ++multis;
        } else if (!kWhiteSpace.Contains(*text)) {
            ++singles;
        }
        text += step;
    }
    single_byte = singles;
    multi_byte = multis;
    return static_cast<int>(singles + multis);
}
