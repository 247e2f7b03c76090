#include "Utility/StringToolkit/BinarySearch.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "Internal/AsciiCase.h"

using utility::internal::CompareIgnoringAsciiCase;

namespace {

// The entry between 0 and `count` - 1 that the halving meets first among those for which `compare` (key
// against entry) gives 0, or -1.
template <typename Compare>
int Halve(int count, Compare compare) {
    int low = 0;
    int end = count;
    while (low < end) {
        const int middle = low + (end - low - 1) / 2;
        const int order = compare(middle);
        if (order == 0) return middle;
        if (order > 0) {
            low = middle + 1;
        } else {
            end = middle;
        }
    }
    return -1;
}

// Indexes are int, so nothing beyond them can be found.
template <typename T>
int Count(const std::vector<T>& table) {
    return static_cast<int>(std::min<std::size_t>(table.size(), INT_MAX));
}

// Below, a NaN counts as smaller than everything: it is equal to nothing, and the search still ends.
template <typename T>
int CompareNumbers(T key, T entry) {
    return key == entry ? 0 : key > entry ? 1 : -1;
}

}  // namespace

int BinarySearch(int key, int* table, int count) {
    return Halve(count, [=](int i) { return CompareNumbers(key, table[i]); });
}

int BinarySearch(double key, const std::vector<double>& table) {
    return Halve(Count(table), [&](int i) { return CompareNumbers(key, table[static_cast<std::size_t>(i)]); });
}

int BinarySearch(const char* key, const char** table, int count) {
    return Halve(count, [=](int i) { return CompareIgnoringAsciiCase(key, table[i]); });
}

int BinarySearch(const char* key, const std::vector<std::string>& table) {
    return Halve(Count(table),
                 [&](int i) { return CompareIgnoringAsciiCase(key, table[static_cast<std::size_t>(i)].c_str()); });
}

int IsExists(const char* key, const char** table, int count) {
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(key, table[i]) == 0) return 1;
    }
    return 0;
}
