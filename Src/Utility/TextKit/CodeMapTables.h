#ifndef UTILITY_TEXTKIT_CODEMAPTABLES_H
#define UTILITY_TEXTKIT_CODEMAPTABLES_H

// What a CodeMaps object holds, and where it comes from.

#include <array>
#include <cstdint>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "CodeTrans/Tables/GbkToUnicode.h"
#include "Utility/TextKit/Encodings.h"

namespace utility::internal {

// Lead bytes 81 to FE by trail bytes 40 to FE: the form of kGbkToUnicode, for Big5, too.
using DoubleByteGrid = GbkToUnicodeTable;
// Code of each code point of the Basic Multilingual Plane, 0 for none.
using UnicodeToCode = std::array<std::uint16_t, 65536>;

// Both directions of a double-byte encoding.
struct DoubleByteMap {
    const std::uint16_t* to_unicode = nullptr;  // DoubleByteGrid
    const std::uint16_t* to_code = nullptr;     // UnicodeToCode
};

constexpr DoubleByteGrid GridOfFileMap(const std::uint16_t* map) {
    DoubleByteGrid grid{};
    for (std::size_t row = 0; row < kGbkLeads; ++row) {
        for (std::size_t cell = 0; cell < kGbkTrails; ++cell) {
            grid[row * kGbkTrails + cell] = map[MapIndex(static_cast<unsigned char>(kFirstGbkLead + row),
                                                         static_cast<unsigned char>(kFirstGbkTrail + cell))];
        }
    }
    return grid;
}

// Of several codes the first is taken, except where the encoder of the WHATWG Encoding Standard takes the last.
constexpr bool TakesLastBig5Code(unsigned code_point) {
    return code_point == 0x2550 || code_point == 0x255E || code_point == 0x2561 || code_point == 0x256A ||
           code_point == 0x5341 || code_point == 0x5345;
}
constexpr unsigned kFirstBig5EncoderLead = 0xA1;

constexpr UnicodeToCode InvertGrid(const DoubleByteGrid& grid, unsigned first_lead) {
    UnicodeToCode codes{};
    for (unsigned lead = first_lead; lead < kFirstGbkLead + kGbkLeads; ++lead) {
        for (unsigned trail = kFirstGbkTrail; trail < kFirstGbkTrail + kGbkTrails; ++trail) {
            const unsigned code_point = grid[(lead - kFirstGbkLead) * kGbkTrails + (trail - kFirstGbkTrail)];
            if (code_point != 0 && (codes[code_point] == 0 || TakesLastBig5Code(code_point)))
                codes[code_point] = static_cast<std::uint16_t>(lead << 8 | trail);
        }
    }
    return codes;
}

}  // namespace utility::internal

struct textkit::CodeMaps::Tables {
    utility::internal::DoubleByteMap gbk, big5;
    utility::internal::DetectionTable detector;
};

#endif
