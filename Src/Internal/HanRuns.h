#ifndef UTILITY_INTERNAL_HANRUNS_H
#define UTILITY_INTERNAL_HANRUNS_H

// Runs of the characters that most of a Chinese text is made of: U+4E00 to U+9FFF, in UTF-8 E4 B8 80 to E9 BF BF.

#include <algorithm>
#include <cstddef>

#include "Internal/Bytes.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace utility::internal {

inline constexpr std::ptrdiff_t kHanBytes = 3;  // of each of them

// Whether the three bytes are one of them.
constexpr bool IsCommonHan(const char* bytes) {
    const unsigned lead = ToByte(bytes[0]), first_trail = ToByte(bytes[1]);
    return lead >= 0xE4 && lead <= 0xE9 && first_trail >= (lead == 0xE4 ? 0xB8 : 0x80) && first_trail < 0xC0 &&
           IsUtf8Continuation(ToByte(bytes[2]));
}

#ifdef __SSE2__
// A bit for each of the first 15 of the 16 bytes that is wrong for five such characters. Loops should branch on whether there
// is one: the processor goes on with the next five, where it would have to wait for a number of bytes.
inline unsigned WrongForCommonHan(__m128i bytes) {
    // Bytes compare as signed ones: those of 80 to FF in their usual order, ASCII above them.
    const auto all = [](unsigned char byte) { return _mm_set1_epi8(static_cast<char>(byte)); };
    const __m128i leads = _mm_setr_epi8(-1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0);
    const __m128i is_lead = _mm_and_si128(_mm_cmpgt_epi8(bytes, all(0xE3)), _mm_cmplt_epi8(bytes, all(0xEA)));
    const __m128i is_trail = _mm_cmplt_epi8(bytes, all(0xC0));
    const __m128i right = _mm_or_si128(_mm_and_si128(leads, is_lead), _mm_andnot_si128(leads, is_trail));
    const __m128i behind_e4 = _mm_slli_si128(_mm_cmpeq_epi8(bytes, all(0xE4)), 1);
    const __m128i too_low = _mm_and_si128(behind_e4, _mm_cmplt_epi8(bytes, all(0xB8)));
    return ~static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(too_low, right))) & 0x7FFFu;
}
#endif

// The end of those at the start of a text.
inline const char* SkipCommonHan(const char* pos, const char* end) {
#ifdef __SSE2__
    while (end - pos >= 16) {
        const unsigned wrong = WrongForCommonHan(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pos)));
        if (wrong != 0) return pos + __builtin_ctz(wrong) / kHanBytes * kHanBytes;
        pos += 5 * kHanBytes;
    }
#endif
    while (end - pos >= kHanBytes && IsCommonHan(pos)) pos += kHanBytes;
    return pos;
}

// The same, with a copy of them to `out`, which is moved behind it. Up to 16 bytes more are written there.
inline const char* CopyCommonHan(const char* pos, const char* end, char*& out) {
#ifdef __SSE2__
    while (end - pos >= 16) {
        const __m128i sixteen = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pos));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), sixteen);
        if (const unsigned wrong = WrongForCommonHan(sixteen); wrong != 0) {
            const auto right_bytes = __builtin_ctz(wrong) / kHanBytes * kHanBytes;
            out += right_bytes;
            return pos + right_bytes;
        }
        pos += 5 * kHanBytes;
        out += 5 * kHanBytes;
    }
#endif
    for (; end - pos >= kHanBytes && IsCommonHan(pos); pos += kHanBytes) out = std::copy(pos, pos + kHanBytes, out);
    return pos;
}

}  // namespace utility::internal

#endif
