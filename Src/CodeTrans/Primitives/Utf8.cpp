#include "CodeTrans/Primitives/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "Internal/Bytes.h"
#include "Internal/LenientUtf8.h"
#include "Internal/Utf8Encoding.h"
#include "Internal/Utf8Runs.h"
#include "Internal/Words.h"

namespace {

using namespace utility::internal;

constexpr wchar_t kNoCharacter = 0xFEFF;
constexpr std::size_t kMaxBmpBytes = 3;

unsigned char FollowingByte(std::uint32_t code_point, unsigned shift) {
    return static_cast<unsigned char>(0x80 | (code_point >> shift & 0x3F));
}

struct WideWriter {
    wchar_t* wide;

    unsigned Four(CodePoints4 code_points) {
        std::memcpy(wide, &code_points, sizeof code_points);
        return 4;
    }
    void Took(unsigned count) { wide += count; }
    void Ascii8(const char* bytes) { Widen8ToWide(bytes, wide); }
    void TookAscii(unsigned count) { wide += count; }
};

// Decodes `length` bytes, none of them zero, and returns the number of characters: at most `length`. `roomy`: `wide`
// has room for as many; otherwise for no more than there are.
std::size_t DecodeLeniently(const char* utf8, std::size_t length, wchar_t* wide, bool roomy) {
    const char* const end = utf8 + length;
    WideWriter writer{wide};
    const auto read_one = [&](const char*& text) { DecodeOneLeniently(text, end, writer.wide); };
    constexpr auto kRule = ThreeBytes::kByLead;
    if (roomy) {
        utf8 = ReadUtf8Runs<kRule>(utf8, end, writer, read_one);
    } else {
        if (HasFullTail(utf8, end)) utf8 = ReadUtf8Runs<kRule>(utf8, end - kTail, writer, read_one);
        utf8 = ReadUtf8RunsExactly<kRule>(utf8, end, writer, read_one);
    }
    while (utf8 != end) read_one(utf8);
    return static_cast<std::size_t>(writer.wide - wide);
}

}  // namespace

std::size_t unicode_to_utf8(const wchar_t* text, unsigned long count, unsigned char** utf8) {
    *utf8 = nullptr;
    if (count > (SIZE_MAX - 1) / kMaxBmpBytes) return 0;
    const std::size_t size = kMaxBmpBytes * count + 1;
    *utf8 = static_cast<unsigned char*>(std::malloc(size));
    if (*utf8 == nullptr) return 0;
    auto* const bytes = reinterpret_cast<char*>(*utf8);
    const auto length = static_cast<std::size_t>(EncodeBmp(text, text + count, bytes) - bytes);
    std::memset(bytes + length, 0, size - length);
    return length;
}

std::string unicode_to_utf8(std::wstring text) {
    const std::size_t count = std::min(text.size(), text.find(L'\0'));
    const wchar_t* const end = text.data() + count;
    std::string utf8(kMaxBmpBytes * count + 1, '\0');
    utf8.resize(static_cast<std::size_t>(EncodeBmp(text.data(), end, utf8.data()) - utf8.data()));
    return utf8;
}

std::size_t utf8_to_unicode(unsigned char* utf8, wchar_t* wide) {
    const std::size_t length = std::strlen(reinterpret_cast<const char*>(utf8));
    const std::size_t characters = DecodeLeniently(reinterpret_cast<const char*>(utf8), length, wide, false);
    std::memset(wide + characters, 0, 2);
    return characters * sizeof(wchar_t);
}

std::wstring utf8_to_unicode(const char* utf8) {
    std::wstring wide(std::strlen(utf8), L'\0');
    const std::size_t characters = DecodeLeniently(utf8, wide.size(), wide.data(), true);
    wide.resize(std::min(characters, wide.find(L'\0')));
    return wide;
}

std::wstring UtfStr2Unicode(const char* utf8) {
    return utf8_to_unicode(SkipByteOrderMark(utf8));
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
