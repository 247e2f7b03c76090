#ifndef UTILITY_CODETRANS_GBKTOUNICODE_H
#define UTILITY_CODETRANS_GBKTOUNICODE_H

// The inverse of CodeTable: read-only data worked out by the compiler, so it costs nothing at start-up and
// any number of threads may read it.

#include <cstdint>

#include "CodeTrans/Tables/PairTable.h"
#include "Internal/Bytes.h"

namespace utility::internal {

// Code point of each two-byte code of code page 936, 0 for other pairs.
extern const PairTable<std::uint16_t> kGbkToUnicode;

// The same as UTF-8.
extern const PairTable<std::uint32_t> kGbkToUtf8;

// Any two bytes may be asked for.
inline unsigned GbkToUnicode(unsigned char lead, unsigned char trail) {
    return IsAscii(lead) ? 0 : kGbkToUnicode[PairIndex(lead, trail)];
}

}  // namespace utility::internal

#endif
