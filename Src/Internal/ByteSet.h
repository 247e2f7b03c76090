#ifndef UTILITY_INTERNAL_BYTESET_H
#define UTILITY_INTERNAL_BYTESET_H

// A set of byte values that answers membership by one table look-up, in place of strchr over a list.

#include <array>
#include <cstdint>

#include "Internal/Bytes.h"

namespace utility::internal {

class ByteSet {
public:
    constexpr ByteSet() = default;
    // The bytes of a NUL-terminated list; the NUL itself is no member.
    constexpr explicit ByteSet(const char* bytes) {
        for (; *bytes != '\0'; ++bytes) Add(ToByte(*bytes));
    }
    constexpr void Add(unsigned char byte) { words_[byte >> 6] |= std::uint64_t{1} << (byte & 63); }
    constexpr bool Contains(char c) const { return Contains(ToByte(c)); }
    constexpr bool Contains(unsigned char byte) const { return (words_[byte >> 6] >> (byte & 63) & 1) != 0; }

private:
    std::array<std::uint64_t, 4> words_{};
};

}  // namespace utility::internal

#endif
