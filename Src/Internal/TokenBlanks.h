#ifndef UTILITY_INTERNAL_TOKENBLANKS_H
#define UTILITY_INTERNAL_TOKENBLANKS_H

#include "Internal/ByteSet.h"

namespace utility::internal {

// What may stand in front of a token: its delimiters, and the blanks, which do not end one.
inline ByteSet WithTokenBlanks(ByteSet delimiters) {
    for (const char blank : {' ', '\t', '\r'}) delimiters.Add(ToByte(blank));
    return delimiters;
}

}  // namespace utility::internal

#endif
