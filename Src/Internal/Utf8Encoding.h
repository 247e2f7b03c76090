#ifndef UTILITY_INTERNAL_UTF8ENCODING_H
#define UTILITY_INTERNAL_UTF8ENCODING_H

// Wide characters of the Basic Multilingual Plane to UTF-8, three times: plainly; four at a time with the vector
// instructions of most x86-64 processors; and by the better of the two on this processor.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Internal/Utf8Sequences.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace utility::internal {

// All write the characters up to `end`, nothing for those outside the plane, and return the end of what they wrote. The
// buffer has three bytes for each character and one more, any of which may be written.
inline char* EncodeBmpPlainly(const wchar_t* text, const wchar_t* end, char* utf8) {
    for (; text != end; ++text) {
        const auto code_point = static_cast<std::uint32_t>(*text);
        if (code_point < 0x10000) utf8 = WriteUtf8(code_point, utf8);
    }
    return utf8;
}

#if defined(__x86_64__)
// For four characters that take 1 to 3 bytes each: from which byte of four lanes of four each byte of the text comes. Bit n
// of the index says that character n takes more than one byte, bit 4 + n more than two.
struct Utf8Packing {
    alignas(16) std::uint8_t sources[256][16];
    std::uint8_t lengths[256];
};
constexpr Utf8Packing MakeUtf8Packing() {
    Utf8Packing packing{};
    for (unsigned index = 0; index < 256; ++index) {
        unsigned length = 0;
        for (unsigned lane = 0; lane < 4; ++lane)
            for (unsigned byte = 0; byte < 1 + (index >> lane & 1) + (index >> (4 + lane) & 1); ++byte)
                packing.sources[index][length++] = static_cast<std::uint8_t>(4 * lane + byte);
        packing.lengths[index] = static_cast<std::uint8_t>(length);
    }
    return packing;
}
inline constexpr Utf8Packing kUtf8Packing = MakeUtf8Packing();

// Each lane gets the bytes of its character, lowest first, as if it took one, two and three; comparisons choose; one shuffle
// moves the bytes together. No step depends on what script the text is in, so there is nothing to guess wrong.
__attribute__((target("sse4.1"))) inline char* EncodeBmpSse41(const wchar_t* text, const wchar_t* end, char* utf8) {
    const auto load = [](const wchar_t* from) __attribute__((target("sse4.1"))) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    };
    while (end - text >= 5) {  // 16 bytes of room
        const __m128i one = load(text);
        const __m128i beyond = _mm_srli_epi32(one, 16);
        if (!_mm_testz_si128(beyond, beyond)) {
            utf8 = EncodeBmpPlainly(text, text + 4, utf8);
            text += 4;
            continue;
        }
        const __m128i above_one = _mm_cmpgt_epi32(one, _mm_set1_epi32(0x7F));
        const __m128i above_two = _mm_cmpgt_epi32(one, _mm_set1_epi32(0x7FF));
        const int more = _mm_movemask_ps(_mm_castsi128_ps(above_one));
        if (more == 0) {
            const int ascii = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packus_epi32(one, one), one));
            std::memcpy(utf8, &ascii, sizeof ascii);
            utf8 += 4;
            text += 4;
            for (; end - text >= 16; text += 16, utf8 += 16) {
                const __m128i a = load(text), b = load(text + 4), c = load(text + 8), d = load(text + 12);
                const __m128i all = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
                if (!_mm_testz_si128(all, _mm_set1_epi32(-0x80))) break;
                const __m128i bytes = _mm_packus_epi16(_mm_packus_epi32(a, b), _mm_packus_epi32(c, d));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(utf8), bytes);
            }
            continue;
        }
        const __m128i last = _mm_and_si128(one, _mm_set1_epi32(0x3F));
        const __m128i middle = _mm_and_si128(_mm_srli_epi32(one, 6), _mm_set1_epi32(0x3F));
        const __m128i two =
            _mm_or_si128(_mm_or_si128(_mm_srli_epi32(one, 6), _mm_slli_epi32(last, 8)), _mm_set1_epi32(0x80C0));
        const __m128i three = _mm_or_si128(_mm_or_si128(_mm_srli_epi32(one, 12), _mm_slli_epi32(middle, 8)),
                                           _mm_or_si128(_mm_slli_epi32(last, 16), _mm_set1_epi32(0x8080E0)));
        const __m128i bytes = _mm_blendv_epi8(_mm_blendv_epi8(one, two, above_one), three, above_two);
        const auto index = static_cast<unsigned>(more | _mm_movemask_ps(_mm_castsi128_ps(above_two)) << 4);
        const __m128i sources = _mm_load_si128(reinterpret_cast<const __m128i*>(kUtf8Packing.sources[index]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(utf8), _mm_shuffle_epi8(bytes, sources));
        utf8 += kUtf8Packing.lengths[index];
        text += 4;
    }
    return EncodeBmpPlainly(text, end, utf8);
}
#endif

inline char* EncodeBmp(const wchar_t* text, const wchar_t* end, char* utf8) {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("sse4.1")) return EncodeBmpSse41(text, end, utf8);
#endif
    return EncodeBmpPlainly(text, end, utf8);
}

}  // namespace utility::internal

#endif
