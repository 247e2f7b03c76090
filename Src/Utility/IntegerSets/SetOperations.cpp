#include "Utility/IntegerSets/SetOperations.h"

#include <algorithm>

bool IsExists(int value, const std::vector<int>& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

int LocateIndex(int value, const std::vector<int>& sorted) {
    const auto found = std::find_if(sorted.begin(), sorted.end(), [value](int element) { return element >= value; });
    return found == sorted.end() ? -1 : static_cast<int>(found - sorted.begin());
}

std::size_t Intersection(const std::vector<int>& sorted_a, const std::vector<int>& sorted_b, int offset,
                         std::vector<int>& common) {
    std::size_t b = 0;
    for (std::size_t a = 0; a < sorted_a.size(); ++a) {
        const long shifted = static_cast<long>(sorted_a[a]) + offset;
        while (b < sorted_b.size() && sorted_b[b] < shifted) ++b;
        if (b == sorted_b.size()) break;
        if (sorted_b[b] == shifted) {
            common.push_back(sorted_a[a]);
            ++b;
        }
    }
    return common.size();
}

// What stays moves up at once to where it ends up, since erasing elements one by one would move the rest
// every time.
bool Not(std::vector<int>& sorted_a, const std::vector<int>& sorted_b) {
    std::size_t a = 0;
    std::size_t kept = 0;
    for (std::size_t b = 0; a < sorted_a.size() && b < sorted_b.size();) {
        if (sorted_a[a] < sorted_b[b]) {
            sorted_a[kept++] = sorted_a[a++];
        } else if (sorted_a[a] == sorted_b[b++]) {
            ++a;
        }
    }
    if (kept == a) return false;
    const auto position = [&sorted_a](std::size_t index) {
        return sorted_a.begin() + static_cast<std::ptrdiff_t>(index);
    };
    sorted_a.erase(position(kept), position(a));
    return true;
}
