#include "CodeTrans/Primitives/Utf8.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "Internal/Bytes.h"

namespace {

using utility::internal::IsAscii;
using utility::internal::IsUtf8Continuation;
using utility::internal::ToByte;

constexpr wchar_t kNoCharacter = 0xFEFF;
constexpr std::size_t kMaxBmpBytes = 3;

// wchar_t is signed on some machines: a negative value lies above the BMP on all of them.
std::uint32_t CodePointOf(wchar_t character) {
    return static_cast<std::uint32_t>(character);
}

std::size_t EncodedLength(std::uint32_t code_point) {
    return code_point < 0x80 ? 1 : code_point < 0x800 ? 2 : code_point < 0x10000 ? 3 : 0;
}

unsigned char FollowingByte(std::uint32_t code_point, unsigned shift) {
    return static_cast<unsigned char>(0x80 | (code_point >> shift & 0x3F));
}

// Writes the character, nothing where it lies outside the BMP; returns the end of what it wrote.
unsigned char* EncodeBmp(std::uint32_t code_point, unsigned char* utf8) {
    switch (EncodedLength(code_point)) {
        case 1:
            *utf8++ = static_cast<unsigned char>(code_point);
            break;
        case 2:
            *utf8++ = static_cast<unsigned char>(0xC0 | code_point >> 6);
            *utf8++ = FollowingByte(code_point, 0);
            break;
        case 3:
            *utf8++ = static_cast<unsigned char>(0xE0 | code_point >> 12);
            *utf8++ = FollowingByte(code_point, 6);
            *utf8++ = FollowingByte(code_point, 0);
            break;
        default:
            break;
    }
    return utf8;
}

wchar_t TwoByteCharacter(unsigned lead, unsigned second) {
    return static_cast<wchar_t>((lead & 0x1F) << 6 | (second & 0x3F));
}

wchar_t ThreeByteCharacter(unsigned lead, unsigned second, unsigned third) {
    return static_cast<wchar_t>((lead & 0x0F) << 12 | (second & 0x3F) << 6 | (third & 0x3F));
}

// Decodes `length` bytes, none of them zero, and returns the number of characters: at most `length`.
std::size_t DecodeLeniently(const unsigned char* utf8, std::size_t length, wchar_t* wide) {
    wchar_t* out = wide;
    for (std::size_t byte_pos = 0; byte_pos < length;) {
        const unsigned char* bytes = utf8 + byte_pos;
        const std::size_t left = length - byte_pos;
        if (IsAscii(bytes[0])) {
            *out++ = bytes[0];
            byte_pos += 1;
        } else if ((bytes[0] & 0xE0) == 0xC0 && left > 1) {
            *out++ = TwoByteCharacter(bytes[0], bytes[1]);
            byte_pos += 2;
        } else if ((bytes[0] & 0xF0) == 0xE0 && left > 2) {
            *out++ = ThreeByteCharacter(bytes[0], bytes[1], bytes[2]);
            byte_pos += 3;
        } else {
            byte_pos += 1;
        }
    }
    return static_cast<std::size_t>(out - wide);
}

}  // namespace

std::size_t unicode_to_utf8(const wchar_t* text, unsigned long count, unsigned char** utf8) {
    *utf8 = nullptr;
    if (count > (SIZE_MAX - 1) / kMaxBmpBytes) return 0;
    *utf8 = static_cast<unsigned char*>(std::calloc(kMaxBmpBytes * count + 1, 1));
    if (*utf8 == nullptr) return 0;
    unsigned char* end = *utf8;
    for (std::size_t i = 0; i < count; ++i) end = EncodeBmp(CodePointOf(text[i]), end);
    return static_cast<std::size_t>(end - *utf8);
}

std::string unicode_to_utf8(std::wstring text) {
    text.resize(std::wcslen(text.c_str()));
    std::size_t length = 0;
    for (const wchar_t character : text) length += EncodedLength(CodePointOf(character));
    std::string utf8(length, '\0');
    auto* end = reinterpret_cast<unsigned char*>(utf8.data());
    for (const wchar_t character : text) end = EncodeBmp(CodePointOf(character), end);
    return utf8;
}

std::size_t utf8_to_unicode(unsigned char* utf8, wchar_t* wide) {
    const std::size_t length = std::strlen(reinterpret_cast<const char*>(utf8));
    const std::size_t characters = DecodeLeniently(utf8, length, wide);
    std::memset(wide + characters, 0, 2);
    return characters * sizeof(wchar_t);
}

std::wstring utf8_to_unicode(const char* utf8) {
    std::wstring wide(std::strlen(utf8), L'\0');
    DecodeLeniently(reinterpret_cast<const unsigned char*>(utf8), wide.size(), wide.data());
    wide.resize(std::wcslen(wide.c_str()));
    return wide;
}

std::wstring UtfStr2Unicode(const char* utf8) {
    constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
    const bool marked = std::strncmp(utf8, kByteOrderMark, 3) == 0;
    return utf8_to_unicode(marked ? utf8 + 3 : utf8);
}

int unicode_to_utf8_one(unsigned long code_point, unsigned char* utf8, int size) {
    constexpr int kMaxBytes = 6;
    if (utf8 == nullptr || size < kMaxBytes || code_point > 0x7FFFFFFF) return 0;
    if (code_point < 0x80) {
        utf8[0] = static_cast<unsigned char>(code_point);
        return 1;
    }
    // A sequence of n bytes carries 5n + 1 bits; its lead byte announces n by as many one bits from the top.
    int length = 2;
    while (code_point >> (5 * length + 1) != 0) ++length;
    const unsigned lead_mark = 0xFF00u >> length & 0xFF;
    int shift = 6 * (length - 1);
    utf8[0] = static_cast<unsigned char>(lead_mark | code_point >> shift);
    for (int i = 1; i < length; ++i) {
        shift -= 6;
        utf8[i] = FollowingByte(static_cast<std::uint32_t>(code_point), static_cast<unsigned>(shift));
    }
    return length;
}

std::size_t UTF8Char_ToUnicode(const char* utf8, unsigned long length, wchar_t& code_point) {
    code_point = kNoCharacter;
    if (length == 0) return 1;
    const unsigned char lead = ToByte(utf8[0]);
    if (IsAscii(lead)) {
        code_point = lead;
        return 1;
    }
    if (lead < 0xC0 || lead >= 0xFE) return 1;
    if (lead >= 0xF0) return lead < 0xF8 ? 4 : lead < 0xFC ? 5 : 6;
    const bool second_follows = length > 1 && IsUtf8Continuation(ToByte(utf8[1]));
    if (lead < 0xE0) {
        if (second_follows) code_point = TwoByteCharacter(lead, ToByte(utf8[1]));
        return 2;
    }
    if (second_follows && length > 2 && IsUtf8Continuation(ToByte(utf8[2]))) {
        code_point = ThreeByteCharacter(lead, ToByte(utf8[1]), ToByte(utf8[2]));
    }
    return 3;
}
