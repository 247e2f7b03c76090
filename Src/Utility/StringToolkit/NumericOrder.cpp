#include "Utility/StringToolkit/NumericOrder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Internal/ReadInt.h"

namespace {

int NumberBehind(const std::string& text, std::size_t prefix_bytes) {
    if (text.size() <= prefix_bytes) return 0;
    return utility::internal::ReadInt(text.c_str() + prefix_bytes);
}

// Number and place in one, so that no two are equal and the order of equal numbers is that of their places: the number,
// moved to where the least one is 0, above the place.
std::uint64_t Key(int number, std::size_t place) {
    constexpr std::uint32_t kSignBit = 0x80000000;
    return std::uint64_t{static_cast<std::uint32_t>(number) ^ kSignBit} << 32 | place;
}

// Sorts keys that are in the order of their places: by the bytes of the number, the lowest first, each time in one pass
// that keeps the order of those alike.
void SortByBytes(std::vector<std::uint64_t>& keys) {
    std::vector<std::uint64_t> sorted(keys.size());
    for (unsigned shift = 32; shift < 64; shift += 8) {
        const auto byte_of = [shift](std::uint64_t key) { return key >> shift & 0xFF; };
        std::array<std::size_t, 256> places{};
        for (const std::uint64_t key : keys) ++places[byte_of(key)];
        if (places[byte_of(keys[0])] == keys.size()) continue;  // all alike
        std::size_t start = 0;
        for (std::size_t& place : places) start += std::exchange(place, start);
        for (const std::uint64_t key : keys) sorted[places[byte_of(key)]++] = key;
        keys.swap(sorted);
    }
}

void SortKeys(std::vector<std::uint64_t>& keys) {
    // With fewer keys the passes over the counters take longer than comparing.
    constexpr std::size_t kMany = 200;
    if (keys.size() < kMany) {
        std::sort(keys.begin(), keys.end());
    } else {
        SortByBytes(keys);
    }
}

}  // namespace

bool _index_digit::operator<(const _index_digit& other) const {
    return digit < other.digit;
}

void SortByNumber(std::vector<std::string>& list, const char* prefix) {
    const std::size_t prefix_bytes = std::strlen(prefix);
    std::vector<std::uint64_t> keys;
    keys.reserve(list.size());
    for (const std::string& text : list) keys.push_back(Key(NumberBehind(text, prefix_bytes), keys.size()));
    SortKeys(keys);
    std::vector<std::string> sorted;
    sorted.reserve(list.size());
    for (const std::uint64_t key : keys) sorted.push_back(std::move(list[static_cast<std::uint32_t>(key)]));
    list = std::move(sorted);
}
