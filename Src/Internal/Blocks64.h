#ifndef UTILITY_INTERNAL_BLOCKS64_H
#define UTILITY_INTERNAL_BLOCKS64_H

// A block of 64 bytes as bits, the first byte's the lowest.

#include <cstdint>

#include "Internal/Words.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace utility::internal {

inline std::uint64_t TopBits64(const char* bytes) {
    std::uint64_t bits = 0;
#ifdef __SSE2__
    for (unsigned i = 0; i < 4; ++i) {
        const __m128i sixteen = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * i));
        bits |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(sixteen))} << 16 * i;
    }
#else
    // The product brings the top bits of a word together in its highest byte.
    for (unsigned i = 0; i < 8; ++i)
        bits |= ((LoadWord<std::uint64_t>(bytes + 8 * i) & kTopBits) >> 7) * 0x0102040810204080u >> 56 << 8 * i;
#endif
    return bits;
}

}  // namespace utility::internal

#endif
