#ifndef UTILITY_CODETRANS_GBKTOUNICODE_H
#define UTILITY_CODETRANS_GBKTOUNICODE_H

// The inverse of CodeTable: read-only data worked out by the compiler, so it costs nothing at start-up and
// any number of threads may read it.

#include <array>
#include <cstddef>
#include <cstdint>

namespace utility::internal {

// The two-byte codes of code page 936 have lead bytes 81 to FE and trail bytes 40 to FE.
inline constexpr unsigned kFirstGbkLead = 0x81;
inline constexpr unsigned kFirstGbkTrail = 0x40;
inline constexpr std::size_t kGbkLeads = 0xFE - kFirstGbkLead + 1;
inline constexpr std::size_t kGbkTrails = 0xFE - kFirstGbkTrail + 1;

using GbkToUnicodeTable = std::array<std::uint16_t, kGbkLeads * kGbkTrails>;
extern const GbkToUnicodeTable kGbkToUnicode;

// Code point of a two-byte GBK code, 0 where code page 936 has none. Any two bytes may be asked for.
inline unsigned GbkToUnicode(unsigned char lead, unsigned char trail) {
    const unsigned row = lead - kFirstGbkLead;
    const unsigned cell = trail - kFirstGbkTrail;
    return row < kGbkLeads && cell < kGbkTrails ? kGbkToUnicode[row * kGbkTrails + cell] : 0;
}

}  // namespace utility::internal

#endif
