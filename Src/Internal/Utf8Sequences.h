#ifndef UTILITY_INTERNAL_UTF8SEQUENCES_H
#define UTILITY_INTERNAL_UTF8SEQUENCES_H

// Strict UTF-8: what is well-formed, and how far a malformed sequence reaches.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Internal/Bytes.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace utility::internal {

inline constexpr std::string_view kUtf8Replacement = "\xEF\xBF\xBD";
inline constexpr std::uint32_t kReplacementCodePoint = 0xFFFD;

struct Utf8Sequence {
    // Well-formed: its length. Malformed: the bytes that one replacement stands for, which is the longest start of a
    // sequence that could have gone on, or the one byte that starts none.
    std::size_t length;
    bool valid;
};

// The sequence at the start of the `available` bytes, of which there is at least one.
constexpr Utf8Sequence ReadUtf8Sequence(const char* text, std::size_t available) {
    const unsigned char lead = ToByte(text[0]);
    if (lead < 0x80) return {1, true};
    if (lead < 0xC2 || lead > 0xF4) return {1, false};
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // Overlong forms, surrogates and values beyond U+10FFFF show in the second byte.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (available < 2 || ToByte(text[1]) < lowest || ToByte(text[1]) > highest) return {1, false};
    for (std::size_t i = 2; i < length; ++i)
        if (i >= available || !IsUtf8Continuation(ToByte(text[i]))) return {i, false};
    return {length, true};
}

// Code point of a well-formed sequence.
constexpr std::uint32_t Utf8CodePoint(const char* text, std::size_t length) {
    std::uint32_t code_point = length == 1 ? ToByte(text[0]) : ToByte(text[0]) & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) code_point = code_point << 6 | (ToByte(text[i]) & 0x3Fu);
    return code_point;
}

struct Utf8Character {
    char32_t code_point;
    std::size_t length;  // in bytes; not 0
};

// The character at `pos`, which is not `end`: U+FFFD for a malformed sequence.
inline Utf8Character ReadUtf8Character(const char* pos, const char* end) {
    // Nearly all beyond ASCII that a Chinese text holds, of which only those behind E0 and ED need a closer look.
    if (end - pos >= 3) {
        const unsigned lead = ToByte(pos[0]), first = ToByte(pos[1]) ^ 0x80u, second = ToByte(pos[2]) ^ 0x80u;
        if (lead - 0xE1 < 0xF && lead != 0xED && (first | second) < 0x40)
            return {static_cast<char32_t>((lead & 0xF) << 12 | first << 6 | second), 3};
    }
    const Utf8Sequence sequence = ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos));
    return {sequence.valid ? Utf8CodePoint(pos, sequence.length) : kReplacementCodePoint, sequence.length};
}

// Writes up to four bytes for a code point that is no surrogate and returns the place behind them.
constexpr char* WriteUtf8(std::uint32_t code_point, char* out) {
    if (code_point < 0x80) {
        *out++ = ToChar(code_point);
    } else if (code_point < 0x800) {
        *out++ = ToChar(0xC0 | code_point >> 6);
        *out++ = ToChar(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        *out++ = ToChar(0xE0 | code_point >> 12);
        *out++ = ToChar(0x80 | (code_point >> 6 & 0x3F));
        *out++ = ToChar(0x80 | (code_point & 0x3F));
    } else {
        *out++ = ToChar(0xF0 | code_point >> 18);
        *out++ = ToChar(0x80 | (code_point >> 12 & 0x3F));
        *out++ = ToChar(0x80 | (code_point >> 6 & 0x3F));
        *out++ = ToChar(0x80 | (code_point & 0x3F));
    }
    return out;
}

// The end of the ASCII bytes at the start of a text.
inline const char* SkipAscii(const char* pos, const char* end) {
    for (std::uint64_t word; end - pos >= static_cast<std::ptrdiff_t>(sizeof word); pos += sizeof word) {
        std::memcpy(&word, pos, sizeof word);
        if ((word & 0x8080808080808080u) != 0) break;
    }
    while (pos != end && IsAscii(ToByte(*pos))) ++pos;
    return pos;
}

// The end of the three-byte sequences at the start of a text, such as those of all Chinese characters, as far as they need no
// closer look: behind the lead bytes E0 and ED not all bytes are well-formed, and the last one is left.
inline const char* SkipThreeByteSequences(const char* pos, const char* end) {
#ifdef __SSE2__
    // Five at a time: a byte for each of the bits that make it a lead or a continuation byte, and none of the two leads.
    while (end - pos >= 16) {
        constexpr char kLeadBits = '\xF0', kLead = '\xE0', kBits = '\xC0', kContinuation = '\x80';
        const __m128i bits = _mm_setr_epi8(kLeadBits, kBits, kBits, kLeadBits, kBits, kBits, kLeadBits, kBits, kBits,
                                           kLeadBits, kBits, kBits, kLeadBits, kBits, kBits, 0);
        const __m128i values = _mm_setr_epi8(kLead, kContinuation, kContinuation, kLead, kContinuation, kContinuation,
                                             kLead, kContinuation, kContinuation, kLead, kContinuation, kContinuation,
                                             kLead, kContinuation, kContinuation, 0);
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pos));
        const __m128i right = _mm_cmpeq_epi8(_mm_and_si128(bytes, bits), values);
        const __m128i excluded =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\xE0')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\xED')));
        const auto wrong = ~static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(excluded, right))) & 0x7FFFu;
        if (wrong != 0) return pos + __builtin_ctz(wrong) / 3 * 3;
        pos += 15;
    }
#endif
    constexpr unsigned kLeads = 0xFFFF & ~(1u << 0x0 | 1u << 0xD);
    for (; end - pos > 3; pos += 3) {
        const unsigned lead = ToByte(pos[0]), trails = TwoByteCode(ToByte(pos[1]), ToByte(pos[2]));
        if ((lead & 0xF0) != 0xE0 || (trails & 0xC0C0) != 0x8080 || (kLeads >> (lead & 0xF) & 1) == 0) break;
    }
    return pos;
}

// The end of the well-formed UTF-8 at the start of a text: `end`, or the first malformed sequence. Not inlined, as its loops
// want registers that callers might take for themselves.
[[gnu::noinline]] inline const char* SkipValidUtf8(const char* pos, const char* end) {
    for (;;) {
        if (pos != end && IsAscii(ToByte(*pos))) pos = SkipAscii(pos, end);
        pos = SkipThreeByteSequences(pos, end);
        if (pos == end) return pos;
        const Utf8Sequence sequence = ReadUtf8Sequence(pos, static_cast<std::size_t>(end - pos));
        if (!sequence.valid) return pos;
        pos += sequence.length;
    }
}

}  // namespace utility::internal

#endif
