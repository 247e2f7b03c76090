#include "Utility/StringToolkit/Hashes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "Internal/AsciiCase.h"
#include "Internal/LittleEndian.h"

using utility::internal::LoadLittleEndian;
using utility::internal::ToAsciiLower;
using utility::internal::ToByte;

namespace {

// The byte as a signed number, whatever the signedness of char, ready for arithmetic that wraps.
constexpr std::uint32_t SignExtend(char c) {
    return static_cast<std::uint32_t>(static_cast<signed char>(c));
}

// Eight bytes, the first of them lowest.
std::uint64_t LoadWord(const char* bytes) {
    unsigned char copy[8];
    std::memcpy(copy, bytes, sizeof copy);
    return LoadLittleEndian<std::uint64_t>(copy);
}

constexpr std::uint64_t Power(std::uint64_t base, unsigned exponent) {
    return exponent == 0 ? 1 : base * Power(base, exponent - 1);
}

// Strhash of the eight bytes of a word: of four pairs at once, then of two pairs of pairs, then of both. No lane
// overflows into the next: a pair comes to less than 2^13, four bytes to less than 2^23.
constexpr std::uint64_t StrhashOfEight(std::uint64_t word) {
    constexpr std::uint64_t kLowBytes = 0x00FF00FF00FF00FF, kLowHalves = 0x0000FFFF0000FFFF;
    const std::uint64_t pairs = (word & kLowBytes) * 31 + (word >> 8 & kLowBytes);
    const std::uint64_t fours = (pairs & kLowHalves) * Power(31, 2) + (pairs >> 16 & kLowHalves);
    return (fours & 0xFFFFFFFF) * Power(31, 4) + (fours >> 32);
}

constexpr std::size_t kHfBlock = 64;

}  // namespace

unsigned int UrlHash(const char* text) {
    // The published step is h = 16h + c; its four top bits are taken off and come back at bits 4 to 7. Here 16h is kept
    // in place of h, whose shift takes the top bits off by itself: four operations that wait for each other, not six.
    std::uint32_t shifted_hash = 0;
    for (; *text != '\0'; ++text) {
        const std::uint32_t sum = shifted_hash + SignExtend(*text);
        shifted_hash = sum << 4 ^ (sum >> 20 & 0xF00);
    }
    return shifted_hash >> 4;
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
        hash += (i * ((3 * byte + 5) * byte + 7) + 11 * byte) & 0xFFFFFF;
    }
    return hash;
}

int HfIp(const char* text) {
    std::size_t left = std::strlen(text);
    std::uint64_t both = 0;  // of eight bytes, each four enter alike
    for (; left >= sizeof both; left -= sizeof both, text += sizeof both) both ^= LoadWord(text);
    auto hash = static_cast<std::uint32_t>(both ^ both >> 32);
    for (unsigned shift = 0; left > 0; --left, ++text, shift = (shift + 8) % 32) {
        hash ^= std::uint32_t{ToByte(*text)} << shift;
    }
    return static_cast<std::int32_t>(hash);
}

long _hf(const char* text) {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    // Up to here no term is cut: a block may be summed first and weighed then, (k + j)c being kc + jc.
    constexpr std::size_t kWholeTerms = 5000000;
    static_assert(kWholeTerms * 3 * 128 < std::size_t{1} << 31);
    const std::size_t bytes = std::strlen(text);
    std::int64_t hash = 0;
    std::size_t k = 1;
    for (; k + kHfBlock <= std::min(bytes + 1, kWholeTerms); k += kHfBlock) {
        std::int32_t sum = 0, weighed = 0;
        for (std::size_t j = 0; j < kHfBlock; ++j) {
            const std::int16_t byte = static_cast<signed char>(text[k - 1 + j]);
            sum += byte;
            weighed += byte * static_cast<std::int16_t>(j);
        }
        hash += 3 * (static_cast<std::int64_t>(k) * sum + weighed);
    }
    for (; k <= bytes; ++k) {
        hash += static_cast<std::int32_t>(SignExtend(text[k - 1]) * static_cast<std::uint32_t>(3 * k));
    }
    return hash < 0 ? -hash : hash;
}

unsigned long Strhash(const char* text) {
    std::size_t left = std::strlen(text);
    std::uint64_t hash = 0;
    for (; left >= 8; left -= 8, text += 8) hash = hash * Power(31, 8) + StrhashOfEight(LoadWord(text));
    for (; left > 0; --left, ++text) hash = hash * 31 + ToByte(*text);
    return hash;
}
