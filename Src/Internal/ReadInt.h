#ifndef UTILITY_INTERNAL_READINT_H
#define UTILITY_INTERNAL_READINT_H

#include <cstdlib>

namespace utility::internal {

// The number that `text` starts with, as atoi reads it. Where the standard leaves atoi undefined, beyond the range of
// int, this keeps the low 32 bits of what strtol gives, as the usual C libraries do.
inline int ReadInt(const char* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

}  // namespace utility::internal

#endif
