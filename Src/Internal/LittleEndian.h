#ifndef UTILITY_INTERNAL_LITTLEENDIAN_H
#define UTILITY_INTERNAL_LITTLEENDIAN_H

// Numbers of binary files: low byte first, whatever the order of the host. Compilers turn these loops into
// one move where the orders agree.

#include <cstddef>
#include <cstdint>

namespace utility::internal {

template <typename Unsigned>
constexpr Unsigned LoadLittleEndian(const unsigned char* bytes) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) value |= static_cast<Unsigned>(Unsigned{bytes[i]} << 8 * i);
    return value;
}

template <typename Unsigned>
constexpr void StoreLittleEndian(Unsigned value, unsigned char* bytes) {
    for (std::size_t i = 0; i < sizeof value; ++i) bytes[i] = static_cast<unsigned char>(value >> 8 * i);
}

}  // namespace utility::internal

#endif
