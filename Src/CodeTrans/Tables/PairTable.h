#ifndef UTILITY_CODETRANS_PAIRTABLE_H
#define UTILITY_CODETRANS_PAIRTABLE_H

// Tables that answer for any two bytes of a double-byte encoding, the first of which has its top bit set: a row for
// each trail byte, a column for each lead byte less its top bit. The 3,755 most frequent characters of GBK lie within
// 94 rows of 80 bytes each, which stay in the first-level cache; and the places of four pairs come out of one word of
// text.

#include <array>
#include <cstddef>
#include <cstdint>

#include "Internal/Bytes.h"
#include "Internal/Utf8Sequences.h"

namespace utility::internal {

inline constexpr std::size_t kPairLeads = 128;
inline constexpr std::size_t kPairs = 256 * kPairLeads;

template <typename Value>
using PairTable = std::array<Value, kPairs>;

constexpr std::size_t PairIndex(unsigned char lead, unsigned char trail) {
    return trail * kPairLeads + (lead & 0x7Fu);
}

// The top bits of the four lead bytes of a word that is four pairs.
inline constexpr std::uint64_t kLeadBits = 0x0080008000800080u;

// PairIndex of each two bytes of the word, 16 bits each, the first lowest.
constexpr std::uint64_t PairIndexes(std::uint64_t word) {
    return (word >> 1 & 0x7F807F807F807F80u) | (word & 0x007F007F007F007Fu);
}

// Each code point below 10000 hex as UTF-8, the first byte lowest, and the number of bytes in the top byte; 0 stays 0.
constexpr PairTable<std::uint32_t> Utf8OfPairs(const PairTable<std::uint16_t>& code_points) {
    PairTable<std::uint32_t> table{};
    for (std::size_t pair = 0; pair < kPairs; ++pair) {
        if (code_points[pair] == 0) continue;
        char bytes[3] = {};
        const auto length = static_cast<std::uint32_t>(WriteUtf8(code_points[pair], bytes) - bytes);
        table[pair] = static_cast<std::uint32_t>(ToByte(bytes[0]) | ToByte(bytes[1]) << 8 | ToByte(bytes[2]) << 16) |
                      length << 24;
    }
    return table;
}

}  // namespace utility::internal

#endif
