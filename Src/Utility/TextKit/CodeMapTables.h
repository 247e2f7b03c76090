#ifndef UTILITY_TEXTKIT_CODEMAPTABLES_H
#define UTILITY_TEXTKIT_CODEMAPTABLES_H

// What a CodeMaps object holds, and where it comes from.

#include <array>
#include <cstdint>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "CodeTrans/Tables/PairTable.h"
#include "Utility/TextKit/Encodings.h"

namespace utility::internal {

// Code of each code point of the Basic Multilingual Plane, 0 for none.
using UnicodeToCode = std::array<std::uint16_t, 65536>;

// Both directions of a double-byte encoding within the Basic Multilingual Plane.
struct DoubleByteMap {
    const PairTable<std::uint32_t>* to_utf8 = nullptr;  // as Utf8OfPairs makes it; never null
    const std::uint16_t* to_code = nullptr;             // UnicodeToCode
};

// The codes of Big5 for code points of plane 2, which no data file holds: part of every map that knows Big5. 0 for
// none.
std::uint32_t Big5ToPlane2(unsigned code);
unsigned Plane2ToBig5(std::uint32_t code_point);

constexpr unsigned kFirstLead = 0x81, kFirstTrail = 0x40, kLast = 0xFE;

// The code points of lead bytes 81 to FE and trail bytes 40 to FE; `map(lead, trail)` is that of the pair.
template <typename Map>
constexpr PairTable<std::uint16_t> PairsOfMap(Map map) {
    PairTable<std::uint16_t> pairs{};
    for (unsigned trail = kFirstTrail; trail <= kLast; ++trail)
        for (unsigned lead = kFirstLead; lead <= kLast; ++lead) {
            const auto lead_byte = static_cast<unsigned char>(lead), trail_byte = static_cast<unsigned char>(trail);
            pairs[PairIndex(lead_byte, trail_byte)] = map(lead_byte, trail_byte);
        }
    return pairs;
}

// Of several codes the first is taken, except where the encoder of the WHATWG Encoding Standard takes the last.
constexpr bool TakesLastBig5Code(unsigned code_point) {
    return code_point == 0x2550 || code_point == 0x255E || code_point == 0x2561 || code_point == 0x256A ||
           code_point == 0x5341 || code_point == 0x5345;
}
constexpr unsigned kFirstBig5EncoderLead = 0xA1;

constexpr UnicodeToCode InvertPairs(const PairTable<std::uint16_t>& pairs, unsigned first_lead) {
    UnicodeToCode codes{};
    for (unsigned lead = first_lead; lead <= kLast; ++lead) {
        for (unsigned trail = kFirstTrail; trail <= kLast; ++trail) {
            const unsigned code_point =
                pairs[PairIndex(static_cast<unsigned char>(lead), static_cast<unsigned char>(trail))];
            if (code_point != 0 && (codes[code_point] == 0 || TakesLastBig5Code(code_point)))
                codes[code_point] = static_cast<std::uint16_t>(lead << 8 | trail);
        }
    }
    return codes;
}

}  // namespace utility::internal

struct textkit::CodeMaps::Tables {
    utility::internal::DoubleByteMap gbk, big5;
    bool big5_plane_2 = false;
    utility::internal::DetectionTable detector;
};

namespace utility::internal {

// The detector of the tables with its form, which for the compiled-in tables is made when it is first asked for.
DetectionTable DetectorOf(const textkit::CodeMaps::Tables& tables);

}  // namespace utility::internal

#endif
