#ifndef UTILITY_CODETRANS_UNICODETOGBK_H
#define UTILITY_CODETRANS_UNICODETOGBK_H

// CodeTable as loops want it: read-only data worked out by the compiler.

#include <array>
#include <cstdint>

namespace utility::internal {

// What stands in GBK text for each code point of the Basic Multilingual Plane, as a word whose lowest byte is the first
// one: one byte for ASCII, two for a code of two bytes; 0 for everything else, which U+0000 and U+20AC are, too. So bit
// 7 tells how many bytes there are.
extern const std::array<std::uint16_t, 65536> kGbkOfCharacter;

}  // namespace utility::internal

#endif
