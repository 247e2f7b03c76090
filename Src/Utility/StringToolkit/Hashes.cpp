#include "Utility/StringToolkit/Hashes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "Internal/AsciiCase.h"

using utility::internal::ToAsciiLower;
using utility::internal::ToByte;

namespace {

// The byte as a signed number, whatever the signedness of char, ready for arithmetic that wraps.
constexpr std::uint32_t SignExtend(char c) {
    return static_cast<std::uint32_t>(static_cast<signed char>(c));
}

}  // namespace

unsigned int UrlHash(const char* text) {
    std::uint32_t hash = 0;
    for (; *text != '\0'; ++text) {
        hash = hash * 16 + SignExtend(*text);
        const std::uint32_t high = hash & 0xF0000000;
        hash = (hash ^ high >> 24) & ~high;
    }
    return hash;
}

unsigned int ELFhash(const char* text) {
    return UrlHash(text);
}

unsigned long Tianlhash(const char* text) {
    constexpr std::size_t kWeighedBytes = 96;
    const std::size_t bytes = std::strlen(text);
    if (bytes == 0) return 0;
    std::uint64_t hash = bytes <= 256 ? (bytes - 1) << 24 : 0xFF000000;
    const std::size_t weighed = std::min(bytes, kWeighedBytes);
    const char* const last_bytes = text + (bytes - weighed);
    for (std::uint32_t i = 1; i <= weighed; ++i) {
        const std::uint32_t byte = ToAsciiLower(ToByte(last_bytes[i - 1]));
        hash += (3 * i * byte * byte + 5 * i * byte + 7 * i + 11 * byte) & 0xFFFFFF;
    }
    return hash;
}

int HfIp(const char* text) {
    std::uint32_t hash = 0;
    for (unsigned shift = 0; *text != '\0'; ++text, shift = (shift + 8) % 32) {
        hash ^= std::uint32_t{ToByte(*text)} << shift;
    }
    return static_cast<std::int32_t>(hash);
}

long _hf(const char* text) {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    std::int64_t hash = 0;
    for (std::uint32_t weight = 3; *text != '\0'; ++text, weight += 3) {
        hash += static_cast<std::int32_t>(SignExtend(*text) * weight);
    }
    return hash < 0 ? -hash : hash;
}

unsigned long Strhash(const char* text) {
    std::uint64_t hash = 0;
    for (; *text != '\0'; ++text) hash = hash * 31 + ToByte(*text);
    return hash;
}
