#ifndef UTILITY_INTERNAL_CHARACTERLISTINDEX_H
#define UTILITY_INTERNAL_CHARACTERLISTINDEX_H

// What CC_Find answers for every unit of one or two bytes over a fixed list, worked out by the compiler: a
// look-up costs a row of a few trail bytes instead of a search through the list. The rule is CC_Find's: the
// first occurrence of the bytes counts, wherever in the list it lies, and only at an even offset.

#include <array>
#include <cstddef>

#include "Internal/Bytes.h"
#include "Internal/EncodedList.h"

namespace utility::internal {

template <std::size_t Capacity>
class CharacterListIndex {
    static_assert(Capacity / 2 < 255, "a place must fit in a byte");

public:
    static constexpr int kNone = -1;

    constexpr explicit CharacterListIndex(const EncodedList<Capacity>& list) {
        // From the back, so that the first occurrence is the last to be stored.
        for (std::size_t offset = list.size(); offset-- > 0;) {
            byte_places_[ToByte(list[offset])] = ToPlace(offset);
        }
        std::size_t entries = 0;
        for (unsigned lead = 0; lead < 256; ++lead) {
            for (std::size_t offset = 0; offset + 1 < list.size(); offset += 2) {
                if (ToByte(list[offset]) != lead || !IsFirstOccurrence(list, offset)) continue;
                trails_[entries] = ToByte(list[offset + 1]);
                places_[entries++] = ToPlace(offset);
            }
            row_ends_[lead + 1] = static_cast<unsigned char>(entries);
        }
    }

    // Byte offset / 2 of the unit `lead` `trail` in the list, or kNone.
    constexpr int FindPair(unsigned char lead, unsigned char trail) const {
        for (std::size_t i = row_ends_[lead]; i < row_ends_[lead + 1u]; ++i) {
            if (trails_[i] == trail) return places_[i] - 1;
        }
        return kNone;
    }

    // The same for a unit of one byte.
    constexpr int FindByte(unsigned char byte) const { return byte_places_[byte] - 1; }

private:
    // A place is offset / 2 + 1 at an even offset, 0 at an odd one, as for what the list lacks.
    static constexpr unsigned char ToPlace(std::size_t offset) {
        return offset % 2 == 0 ? static_cast<unsigned char>(offset / 2 + 1) : static_cast<unsigned char>(0);
    }
    static constexpr bool IsFirstOccurrence(const EncodedList<Capacity>& list, std::size_t offset) {
        for (std::size_t earlier = 0; earlier < offset; ++earlier) {
            if (list[earlier] == list[offset] && list[earlier + 1] == list[offset + 1]) return false;
        }
        return true;
    }

    // The trail bytes of lead byte b are the entries from row_ends_[b] to row_ends_[b + 1].
    std::array<unsigned char, 257> row_ends_{};
    std::array<unsigned char, Capacity / 2 + 1> trails_{};
    std::array<unsigned char, Capacity / 2 + 1> places_{};
    std::array<unsigned char, 256> byte_places_{};
};

}  // namespace utility::internal

#endif
