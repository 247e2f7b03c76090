#ifndef UTILITY_CODETRANS_CODETABLEDATA_H
#define UTILITY_CODETRANS_CODETABLEDATA_H

// The Unicode-to-GBK table where the compiler can read it: character lists are encoded with it at compile time.
// At run time the exported CodeTable serves, so that the bytes stand in the library once.

namespace utility::internal {

inline constexpr unsigned short kUnicodeToGbk[65536] = {
#include "CodeTrans/Tables/CodeTableRows.inc"
};

}  // namespace utility::internal

#endif
