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
// A bit for the first byte of each of five such characters that is none, up to bit 12. Loops should branch on whether there
// is one: the processor goes on with the next five, where it would have to wait for a number of bytes.
inline unsigned WrongForCommonHan(__m128i bytes) {
    constexpr char kLead = '\xE4', kTrail = '\x80', kLeads = 5, kTrails = 0x3F, kNever = '\xFF';
    const __m128i lowest = _mm_setr_epi8(kLead, kTrail, kTrail, kLead, kTrail, kTrail, kLead, kTrail, kTrail, kLead,
                                         kTrail, kTrail, kLead, kTrail, kTrail, 0);
    const __m128i range = _mm_setr_epi8(kLeads, kTrails, kTrails, kLeads, kTrails, kTrails, kLeads, kTrails, kTrails,
                                        kLeads, kTrails, kTrails, kLeads, kTrails, kTrails, 0);
    const __m128i first_lead = _mm_setr_epi8(0, kNever, kNever, 0, kNever, kNever, 0, kNever, kNever, 0, kNever, kNever,
                                             0, kNever, kNever, kNever);
    const __m128i offsets = _mm_sub_epi8(bytes, lowest);
    const __m128i right = _mm_cmpeq_epi8(_mm_min_epu8(offsets, range), offsets);
    // Behind E4 only the trails from B8 on.
    const __m128i behind_first_lead = _mm_slli_si128(_mm_cmpeq_epi8(offsets, first_lead), 1);
    const __m128i too_low = _mm_and_si128(behind_first_lead, _mm_cmplt_epi8(offsets, _mm_set1_epi8(0x38)));
    const auto wrong = ~static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(too_low, right)));
    return (wrong | wrong >> 1 | wrong >> 2) & 0x1249u;
}
#endif

// The end of those at the start of a text.
inline const char* SkipCommonHan(const char* pos, const char* end) {
#ifdef __SSE2__
    while (end - pos >= 16) {
        const unsigned wrong = WrongForCommonHan(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pos)));
        if (wrong != 0) return pos + __builtin_ctz(wrong);
        pos += 5 * kHanBytes;
    }
#endif
    while (end - pos >= kHanBytes && IsCommonHan(pos)) pos += kHanBytes;
    return pos;
}

// The same, with a copy of them to `out`, which is moved behind it. Up to 16 bytes more are written there.
inline const char* CopyCommonHan(const char* pos, const char* end, char*& out) {
    char* place = out;  // `out` itself may, for all the compiler knows, be among the bytes that are written
#ifdef __SSE2__
    while (end - pos >= 16) {
        const __m128i sixteen = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pos));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(place), sixteen);
        if (const unsigned wrong = WrongForCommonHan(sixteen); wrong != 0) {
            const auto right_bytes = __builtin_ctz(wrong);
            out = place + right_bytes;
            return pos + right_bytes;
        }
        pos += 5 * kHanBytes;
        place += 5 * kHanBytes;
    }
#endif
    for (; end - pos >= kHanBytes && IsCommonHan(pos); pos += kHanBytes) place = std::copy(pos, pos + kHanBytes, place);
    out = place;
    return pos;
}

}  // namespace utility::internal

#endif
