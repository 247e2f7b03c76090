#ifndef UTILITY_INTERNAL_CODEPOINTINDEX_H
#define UTILITY_INTERNAL_CODEPOINTINDEX_H

// The characters of a list, as code points that answer where in the list they stand; made by the compiler out of the list
// as readable text.

#include <array>
#include <cstddef>
#include <cstdint>

#include "Internal/EncodedList.h"

namespace utility::internal {

template <std::size_t N>
constexpr std::size_t CountCodePoints(const char (&list)[N]) {
    std::size_t count = 0;
    for (std::size_t pos = 0; pos + 1 < N; ++count) DecodeSourceCharacter(list, pos);
    return count;
}

template <std::size_t Count>
class CodePointIndex {
    static_assert(Count < 0x10000);

public:
    static constexpr int kNone = -1;

    template <std::size_t N>
    constexpr explicit CodePointIndex(const char (&list)[N]) {
        std::size_t pos = 0;
        for (std::size_t place = 0; place < Count; ++place) {
            const auto code_point = static_cast<std::uint32_t>(DecodeSourceCharacter(list, pos));
            std::size_t slot = place;
            for (; slot > 0 && code_points_[slot - 1] > code_point; --slot) {
                code_points_[slot] = code_points_[slot - 1];
                places_[slot] = places_[slot - 1];
            }
            if (slot > 0 && code_points_[slot - 1] == code_point) throw "the list holds a character twice";
            code_points_[slot] = code_point;
            places_[slot] = static_cast<std::uint16_t>(place);
        }
    }

    // Place of the character in the list, counted in characters; kNone if it is not there.
    constexpr int Find(std::uint32_t code_point) const {
        std::size_t low = 0, high = Count;
        while (low < high) {
            const std::size_t middle = (low + high) / 2;
            if (code_points_[middle] < code_point) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low < Count && code_points_[low] == code_point ? places_[low] : kNone;
    }
    constexpr bool Contains(std::uint32_t code_point) const { return Find(code_point) != kNone; }

private:
    std::array<std::uint32_t, Count> code_points_{};  // ascending
    std::array<std::uint16_t, Count> places_{};
};

// The index of a list with static storage: kIndexOf<kSomeText>.Find(U'中').
template <const auto& kText>
inline constexpr CodePointIndex<CountCodePoints(kText)> kIndexOf(kText);

}  // namespace utility::internal

#endif
