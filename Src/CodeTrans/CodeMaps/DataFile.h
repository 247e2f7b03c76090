#ifndef UTILITY_CODETRANS_DATAFILE_H
#define UTILITY_CODETRANS_DATAFILE_H

// The form of the code-map data file, for the library that reads it and for the tools that write it.
//
// All integers are little-endian; there is no header:
//
//     offset        size     content
//          0      49,152     GBK map: kMapEntries code points of 16 bits
//     49,152      49,152     Big5 map, likewise
//     98,304           4     N, number of automaton records, unsigned
//     98,308      16 × N     the records, the four fields of _tTrieNode in their order

#include <array>
#include <cstddef>
#include <cstdint>

namespace utility::internal {

// A map is a grid of 192 rows (trail bytes 40 to FF; a lower one reads row 0) and 128 columns (lead bytes 80 to FF).
constexpr std::size_t kMapRows = 192;
constexpr std::size_t kMapColumns = 128;
constexpr std::size_t kMapEntries = kMapRows * kMapColumns;
constexpr std::size_t kMapBytes = 2 * kMapEntries;

constexpr std::size_t MapIndex(unsigned char lead, unsigned char trail) {
    const std::size_t row = trail > 0x40 ? trail - 0x40u : 0u;
    return row * kMapColumns + (lead & 0x7Fu);
}

// A state of the automaton: a double-array trie with failure links. Record 0 is the root.
struct _tTrieNode {
    std::int32_t nBase;   // the transition on byte b leads to record nBase + b …
    std::int32_t nCheck;  // … and is valid if that record's nCheck is the index of this one
    std::int32_t nFail;   // the state that takes a byte for which this one has no transition
    std::int32_t nValue;  // verdict and score, packed as below
};
constexpr std::size_t kRecordBytes = 16;
static_assert(sizeof(_tTrieNode) == kRecordBytes);

// What a state's value means for each encoding, one channel each.
enum Channel : std::size_t { kGbkChannel, kBig5Channel, kUnicodeChannel, kUtf8Channel, kChannels };

// Bits 0 to 17 of a value are the four deltas, each raised by 9: GBK + 20 × Big5 + 400 × Unicode + 8000 × UTF-8. Bits
// 18 and 19 mean nothing. The bits from 20 up, signed, are a verdict, 0 for none.
constexpr int kDeltaOffset = 9;
constexpr int kScoreMask = 0x3FFFF;
constexpr int kVerdictShift = 20;
constexpr std::int32_t kNeutralValue = kDeltaOffset * (1 + 20 + 400 + 8000);
static_assert(kNeutralValue == 0x1280D);

constexpr int VerdictOf(std::int32_t value) {
    return value >> kVerdictShift;  // arithmetic with every compiler we build with
}
static_assert(VerdictOf(-1) == -1);

constexpr std::array<int, kChannels> DeltasOf(std::int32_t value) {
    const unsigned score = static_cast<unsigned>(value) & kScoreMask;
    return {static_cast<int>(score % 20) - kDeltaOffset, static_cast<int>(score / 20 % 20) - kDeltaOffset,
            static_cast<int>(score / 400 % 20) - kDeltaOffset, static_cast<int>(score / 8000) - kDeltaOffset};
}

}  // namespace utility::internal

#endif
