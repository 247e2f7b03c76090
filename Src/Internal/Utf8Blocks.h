#ifndef UTILITY_INTERNAL_UTF8BLOCKS_H
#define UTILITY_INTERNAL_UTF8BLOCKS_H

// UTF-8 by blocks of 64 bytes, whose characters are told apart and decoded all at once.

#include <cstdint>

#include "Internal/Words.h"

#ifdef __SSE2__
#include <emmintrin.h>

namespace utility::internal {

// Text that starts with a character, for which it looks at 66 bytes.
class Utf8Block {
public:
    explicit Utf8Block(const char* text) : text_(text) {
        for (unsigned i = 0; i < 4; ++i) {
            const __m128i bytes = Load(text + 16 * i);
            const auto put = [&](__m128i lanes, std::uint64_t& bits) {
                bits |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(lanes))} << 16 * i;
            };
            const __m128i high_half = _mm_and_si128(bytes, _mm_set1_epi8('\xF0'));
            put(bytes, top_bits_);
            put(_mm_cmplt_epi8(bytes, _mm_set1_epi8('\xC0')), continuations_);
            put(_mm_cmpeq_epi8(high_half, _mm_set1_epi8('\xE0')), leads_);
        }
    }

    // Whether all is ASCII and lead bytes E0 to EF, each with two continuation bytes as far as the block goes. The rest
    // of the interface is for such blocks.
    bool IsPlain() const {
        const std::uint64_t followers = leads_ << 1 | leads_ << 2;
        return (continuations_ ^ followers) == 0 && top_bits_ == (continuations_ | leads_);
    }
    bool IsAscii() const { return top_bits_ == 0; }
    bool HasNoAscii() const { return top_bits_ == ~std::uint64_t{0}; }
    // The bytes before a sequence that the end of the block cuts.
    unsigned Length() const { return (leads_ >> 62 & 1) != 0 ? 62 : (leads_ >> 63) != 0 ? 63 : 64; }
    // The places within the length where characters start.
    std::uint64_t Starts() const { return ~continuations_ & ~std::uint64_t{0} >> (64 - Length()); }

    // The character that starts at each byte.
    void Decode(std::uint16_t (&units)[64]) const {
        const __m128i zero = _mm_setzero_si128(), six_bits = _mm_set1_epi16(0x3F);
        for (unsigned i = 0; i < 64; i += 16) {
            const __m128i first = Load(text_ + i), second = Load(text_ + i + 1), third = Load(text_ + i + 2);
            const auto decode = [&](__m128i a, __m128i b, __m128i c) {
                const __m128i ascii = _mm_cmplt_epi16(a, _mm_set1_epi16(0x80));
                const __m128i low =
                    _mm_or_si128(_mm_slli_epi16(_mm_and_si128(b, six_bits), 6), _mm_and_si128(c, six_bits));
                const __m128i all = _mm_or_si128(_mm_slli_epi16(a, 12), low);
                return _mm_or_si128(_mm_and_si128(ascii, a), _mm_andnot_si128(ascii, all));
            };
            Store(
                decode(_mm_unpacklo_epi8(first, zero), _mm_unpacklo_epi8(second, zero), _mm_unpacklo_epi8(third, zero)),
                units + i);
            Store(
                decode(_mm_unpackhi_epi8(first, zero), _mm_unpackhi_epi8(second, zero), _mm_unpackhi_epi8(third, zero)),
                units + i + 8);
        }
    }

private:
    static __m128i Load(const char* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }
    static void Store(__m128i value, std::uint16_t* to) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value); }

    const char* text_;
    std::uint64_t top_bits_ = 0, continuations_ = 0, leads_ = 0;
};

}  // namespace utility::internal

#endif
#endif
