#ifndef UTILITY_INTERNAL_CHARACTERSET_H
#define UTILITY_INTERNAL_CHARACTERSET_H

// The characters of a list as a set, so that a character costs two table look-ups whatever the length of the
// list. The set holds what CC_Find finds: a character counts when its first occurrence in the bytes of the
// list lies at an even offset. In a list of two-byte characters a trail byte and the lead byte behind it may
// spell a later character, which CC_Find then misses; it is missing from the set too. A list stored as UTF-8
// holds the units that its bytes pair up to.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Internal/Bytes.h"

namespace utility::internal {

// One character of double-byte text as a string of one or two bytes; a trail byte of 0 stands for none.
struct CharacterUnit {
    unsigned char lead = 0;
    unsigned char trail = 0;

    constexpr std::size_t length() const { return lead == 0 ? 0 : trail == 0 ? 1 : 2; }
};

// The unit at `text`. A byte with its top bit set takes the byte behind it, the NUL at the end of the text
// too.
constexpr CharacterUnit ReadUnit(const char* text) {
    const unsigned char lead = ToByte(text[0]);
    return {lead, IsAscii(lead) ? static_cast<unsigned char>(0) : ToByte(text[1])};
}

// How many bytes ReadUnit looked at, which for a lead byte right before the NUL is one more than the unit's
// length.
constexpr std::size_t BytesTaken(CharacterUnit unit) {
    return IsAscii(unit.lead) ? 1 : 2;
}

// Lists may have up to `Leads` different lead bytes; a lead byte has its top bit set, so 128 are enough for
// any list.
template <std::size_t Leads>
class CharacterSet {
    static_assert(Leads <= 128);

public:
    explicit constexpr CharacterSet(std::string_view list) {
        unsigned char rows = kEmpty;
        // Backwards, so that the first occurrence has the last word.
        for (std::size_t offset = list.size(); offset-- > 0;) {
            const unsigned char byte = ToByte(list[offset]);
            const bool even = offset % 2 == 0;
            lone_bytes_[byte] = even || IsAscii(byte);
            if (IsAscii(byte) || offset + 1 == list.size()) continue;
            if (even && row_of_lead_[byte] == kEmpty) row_of_lead_[byte] = ++rows;
            if (row_of_lead_[byte] != kEmpty) Put(row_of_lead_[byte], ToByte(list[offset + 1]), even);
        }
    }

    // Whether the list holds the unit: one of two bytes, or a lead byte alone, by CC_Find's rule; an ASCII
    // byte wherever it stands; the empty unit never, nor an ASCII byte with a trail byte.
    constexpr bool Contains(CharacterUnit unit) const {
        return unit.trail == 0 ? lone_bytes_[unit.lead] : Get(row_of_lead_[unit.lead], unit.trail);
    }

    // Number of the units of `text` that the list holds. A lead byte at the end takes the byte behind the
    // text.
    constexpr std::size_t Count(const char* text, std::size_t length) const {
        std::size_t count = 0;
        for (std::size_t pos = 0; pos < length;) {
            const CharacterUnit unit = ReadUnit(text + pos);
            count += Contains(unit);
            pos += BytesTaken(unit);
        }
        return count;
    }

private:
    static constexpr unsigned char kEmpty = 0;  // the row of every byte that is no lead byte of the list

    constexpr void Put(unsigned char row, unsigned char column, bool member) {
        std::uint64_t& word = rows_[row][column >> 6];
        const std::uint64_t bit = std::uint64_t{1} << (column & 63);
        word = member ? word | bit : word & ~bit;
    }
    constexpr bool Get(unsigned char row, unsigned char column) const {
        return (rows_[row][column >> 6] >> (column & 63) & 1) != 0;
    }

    std::array<bool, 256> lone_bytes_{};
    std::array<unsigned char, 256> row_of_lead_{};
    std::array<std::array<std::uint64_t, 4>, Leads + 1> rows_{};  // by trail byte
};

// Number of different lead bytes at the even offsets of a list.
constexpr std::size_t CountLeads(std::string_view list) {
    std::array<bool, 256> seen{};
    std::size_t leads = 0;
    for (std::size_t offset = 0; offset < list.size(); offset += 2) {
        const unsigned char byte = ToByte(list[offset]);
        if (!IsAscii(byte) && !seen[byte]) ++leads;
        seen[byte] = true;
    }
    return leads;
}

// The set of a list with static storage, made by the compiler: kSetOf<kSomeList>.Contains(unit).
template <const auto& kList>
inline constexpr CharacterSet<CountLeads(kList.view())> kSetOf(kList.view());

}  // namespace utility::internal

#endif
