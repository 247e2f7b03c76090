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
    // The bytes of a NUL-terminated list; the NUL itself is no member. Tokenisers make a set for every token: the words
    // stay in registers while it grows, where one that is read from memory and written back would cost each byte of the
    // list the time from a store to the next load.
    constexpr explicit ByteSet(const char* bytes) {
        std::uint64_t first = 0, second = 0, third = 0, fourth = 0;
        for (; *bytes != '\0'; ++bytes) {
            const unsigned char byte = ToByte(*bytes);
            const std::uint64_t bit = std::uint64_t{1} << (byte & 63);
            const unsigned word = byte >> 6;
            first |= word == 0 ? bit : 0;
            second |= word == 1 ? bit : 0;
            third |= word == 2 ? bit : 0;
            fourth |= word == 3 ? bit : 0;
        }
        words_ = {first, second, third, fourth};
    }
    constexpr void Add(unsigned char byte) { words_[byte >> 6] |= std::uint64_t{1} << (byte & 63); }
    constexpr bool Contains(char c) const { return Contains(ToByte(c)); }
    constexpr bool Contains(unsigned char byte) const { return (words_[byte >> 6] >> (byte & 63) & 1) != 0; }

private:
    std::array<std::uint64_t, 4> words_{};
};

}  // namespace utility::internal

#endif
