#ifndef UTILITY_INTERNAL_WORDS_H
#define UTILITY_INTERNAL_WORDS_H

// Text in words of 8 bytes, the first byte lowest: loops over runs look at a word at a time and handle all of its
// characters alike. Nothing here reads or writes a byte beyond those it is asked for.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace utility::internal {

inline constexpr std::uint64_t kTopBits = 0x8080808080808080u;

template <typename Unsigned>
inline Unsigned LoadWord(const char* bytes) {
    Unsigned value;
    std::memcpy(&value, bytes, sizeof value);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    if constexpr (sizeof value == 8) value = __builtin_bswap64(value);
    if constexpr (sizeof value == 4) value = __builtin_bswap32(value);
    if constexpr (sizeof value == 2) value = __builtin_bswap16(value);
#endif
    return value;
}
template <typename Unsigned>
inline void StoreWord(Unsigned value, char* bytes) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    if constexpr (sizeof value == 8) value = __builtin_bswap64(value);
    if constexpr (sizeof value == 4) value = __builtin_bswap32(value);
    if constexpr (sizeof value == 2) value = __builtin_bswap16(value);
#endif
    std::memcpy(bytes, &value, sizeof value);
}

// Index of the lowest bit that is set; there is one.
inline unsigned LowestBit(std::uint64_t word) {
    return static_cast<unsigned>(__builtin_ctzll(word));
}

// Whether the 16 bytes are all ASCII.
inline bool AreAscii16(const char* bytes) {
    return ((LoadWord<std::uint64_t>(bytes) | LoadWord<std::uint64_t>(bytes + 8)) & kTopBits) == 0;
}

// The compilers' own vectors: any processor's, as far as it has some, without a path of its own for each.
using Bytes8 = unsigned char __attribute__((vector_size(8)));
using Units8 = std::uint16_t __attribute__((vector_size(16)));
using Wide8 = std::uint32_t __attribute__((vector_size(32)));

inline Units8 Widened8(const char* bytes) {
    Bytes8 narrow;
    std::memcpy(&narrow, bytes, sizeof narrow);
    return __builtin_convertvector(narrow, Units8);
}

// Bytes as UCS-2 units, low byte first, or as wide characters, both at any address.
inline void Widen8ToUcs2(const char* bytes, char* ucs2) {
    Units8 units = Widened8(bytes);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    units <<= 8;
#endif
    std::memcpy(ucs2, &units, sizeof units);
}
inline void Widen8ToWide(const char* bytes, wchar_t* wide) {
    const Wide8 characters = __builtin_convertvector(Widened8(bytes), Wide8);
    std::memcpy(wide, &characters, sizeof characters);
}

}  // namespace utility::internal

#endif
