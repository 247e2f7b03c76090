#include "Utility/IntegerSets/MergeSelect.h"

#include <algorithm>
#include <climits>
#include <cstddef>

namespace {

using Sizes = std::vector<unsigned long>;

constexpr unsigned long kMergedLimit = 1ul << 30;  // sums stay below
constexpr unsigned long kLarge = 20ul << 20;       // from here on a block must be balanced
constexpr unsigned long kBalanceFactor = 10;

// The blocks from some index up to the next large one.
struct SmallBlocks {
    std::size_t end;         // index of that large block, or the number of blocks
    unsigned long sum;       // wraps if it is beyond every limit anyway
    unsigned long smallest;  // ULONG_MAX if there are none
};

// For every index, and the one past the end, the small blocks that start there.
std::vector<SmallBlocks> FindSmallBlocks(const Sizes& sizes, std::size_t n) {
    std::vector<SmallBlocks> blocks(n + 1);
    blocks[n] = {n, 0, ULONG_MAX};
    for (std::size_t i = n; i-- > 0;) {
        const SmallBlocks& next = blocks[i + 1];
        blocks[i] = sizes[i] >= kLarge ? SmallBlocks{i, 0, ULONG_MAX}
                                       : SmallBlocks{next.end, next.sum + sizes[i], std::min(next.smallest, sizes[i])};
    }
    return blocks;
}

// Where the run from `start` ends if its large blocks must be balanced, and by its sum alone it would end at
// `limit`. Steps from one large block to the next; there are fewer than 52 of them below the limit of the
// sum.
std::size_t BalancedEnd(const Sizes& sizes, const std::vector<SmallBlocks>& small_blocks, std::size_t start,
                        std::size_t limit) {
    unsigned long sum = sizes[start];
    unsigned long smallest = sizes[start];
    for (std::size_t next = start + 1; next < limit; ++next) {
        const SmallBlocks& small = small_blocks[next];
        next = small.end;
        if (next >= limit) break;
        sum += small.sum;
        smallest = std::min(smallest, small.smallest);
        const unsigned long large = sizes[next];
        if (!IsBalancedValue(large, smallest) && !IsBalancedValue(large, sum)) return next;
        sum += large;
        smallest = std::min(smallest, large);
    }
    return limit;
}

}  // namespace

bool IsBalancedValue(unsigned long value, unsigned long reference) {
    if (value < reference / kBalanceFactor) return false;
    return reference > ULONG_MAX / kBalanceFactor || value <= reference * kBalanceFactor;
}

int MergeSelect(const std::vector<unsigned long>& sizes, int& count, bool balance) {
    count = 0;
    const std::size_t n = std::min(sizes.size(), std::size_t{INT_MAX});
    if (n < 2) return 0;
    const std::vector<SmallBlocks> small_blocks = balance ? FindSmallBlocks(sizes, n) : std::vector<SmallBlocks>();
    std::size_t best_start = 0;
    std::size_t best_length = 0;
    // The run that the sums allow is a window that moves along: its end never goes back when its start
    // advances.
    std::size_t window_end = 0;
    unsigned long window_sum = 0;
    for (std::size_t start = 0; start + best_length < n; ++start) {
        if (window_end == start) window_sum += sizes[window_end++];
        while (window_end < n && sizes[window_end] < kMergedLimit && window_sum < kMergedLimit - sizes[window_end]) {
            window_sum += sizes[window_end++];
        }
        if (window_end - start > best_length) {
            const std::size_t end = balance ? BalancedEnd(sizes, small_blocks, start, window_end) : window_end;
            if (end - start > best_length) {
                best_start = start;
                best_length = end - start;
            }
        }
        window_sum -= sizes[start];
    }
    count = static_cast<int>(best_length);
    return static_cast<int>(best_start);
}
