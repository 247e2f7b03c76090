#ifndef UTILITY_TOOLS_UNITS_H
#define UTILITY_TOOLS_UNITS_H

// What the detector weighs: the units into which its automaton cuts any bytes, whatever their encoding, and how often a
// text shows them.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

// A byte from 80 up and the one behind it, as first × 256 + second: a double-byte character of GBK and Big5, a piece of
// a sequence of UTF-8, in UCS-2 a code unit or the seam between two. Or a control character that text has no use for,
// by itself: in UCS-2 one half of a code unit. Printable ASCII is passed over.
using Unit = std::uint16_t;
constexpr std::size_t kUnits = 0x10000;

constexpr bool IsOddControl(unsigned char byte) {
    return byte < 0x20 && !(byte >= 0x07 && byte <= 0x0D) && byte != 0x1B;
}

inline std::string BytesOf(Unit unit) {
    if (unit < 0x80) return {static_cast<char>(unit)};
    return {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
}

// Units in a row, 16 bits each, the last one lowest; in front of the first is 0 and never NUL.
using Chain = std::uint64_t;
constexpr Unit LastOf(Chain chain) {
    return static_cast<Unit>(chain & 0xFFFF);
}

// Calls visit(chain) for each unit, with as many as two of the units right in front of it. Only pairs of bytes make
// chains: what stands behind ASCII or a control character starts a new one.
template <typename Visit>
void ForEachUnit(std::string_view bytes, const Visit& visit) {
    constexpr Chain kTwoUnits = 0xFFFFFFFF;
    Chain chain = 0;
    for (std::size_t pos = 0; pos < bytes.size(); ++pos) {
        const auto byte = static_cast<unsigned char>(bytes[pos]);
        if (byte >= 0x80 && pos + 1 < bytes.size()) {
            const auto second = static_cast<unsigned char>(bytes[++pos]);
            chain = (chain & kTwoUnits) << 16 | static_cast<Unit>(byte << 8 | second);
            visit(chain);
            continue;
        }
        if (IsOddControl(byte)) visit(Chain{byte});
        chain = 0;
    }
}

struct CountedChain {
    Chain chain;
    double count;
    int texts = 1;  // in how many
};

// How often a text shows each unit, and each chain of two and of three.
class UnitCounts {
public:
    UnitCounts() : first(kUnits), later(kUnits) {}
    explicit UnitCounts(std::string_view bytes);

    // Counts the first unit of `bytes` as a text of its own.
    void CountFirst(std::string_view bytes);

    // Adds those of a text as shares of all its units of the kind, times `weight`.
    void AddShares(const UnitCounts& text, double weight);

    // Raises each to that of `other` where that is more.
    void RaiseTo(const UnitCounts& other);

    // The first unit of a text or behind ASCII, and those right behind another.
    std::vector<double> first, later;
    std::vector<CountedChain> two, three;  // in order, each once
};

}  // namespace tools

#endif
