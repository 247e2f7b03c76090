#ifndef UTILITY_CODETRANS_GBKTOUNICODE_H
#define UTILITY_CODETRANS_GBKTOUNICODE_H

// The inverse of CodeTable: read-only data worked out by the compiler, so it costs nothing at start-up and
// any number of threads may read it.

#include <array>
#include <cstdint>

#include "CodeTrans/Tables/PairTable.h"
#include "Internal/Bytes.h"

namespace utility::internal {

// Code point of each two-byte code of code page 936, 0 for other pairs.
extern const PairTable<std::uint16_t> kGbkToUnicode;

// The same as UTF-8.
extern const PairTable<std::uint32_t> kGbkToUtf8;

// The character at the start of any two bytes of text, as a word whose lowest byte is the first one: ASCII, whatever
// follows it, or the pair; 0 for NUL and other pairs. Twice as large as a table of pairs, but without any arithmetic.
extern const std::array<std::uint16_t, 65536> kCharacterAtGbk;

// The same as UTF-8: the bytes, lowest first, below their number.
extern const std::array<std::uint32_t, 65536> kUtf8AtGbk;

// Any two bytes may be asked for.
inline unsigned GbkToUnicode(unsigned char lead, unsigned char trail) {
    return IsAscii(lead) ? 0 : kGbkToUnicode[PairIndex(lead, trail)];
}

}  // namespace utility::internal

#endif
