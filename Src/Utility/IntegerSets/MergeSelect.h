#ifndef UTILITY_INTEGERSETS_MERGESELECT_H
#define UTILITY_INTEGERSETS_MERGESELECT_H

/** @file
 * Which of a row of blocks to merge, by their sizes in bytes. Sums and products are exact, however large the
 * sizes; no global state, so any thread may call at any time. */

#include <vector>

#include "../UtilityExport.h"

/** Whether `value` lies within a factor of ten of `reference`: from reference / 10, rounded down, to
 * reference × 10. */
UTILITY_API bool IsBalancedValue(unsigned long value, unsigned long reference);

/** Finds the longest run of neighbouring blocks that may be merged, the first of equally long ones;
 * returns where it starts and sets `count` to its length.
 *
 *     int count;
 *     MergeSelect({10, 20, 30}, count, false);   // 0, and count is 3
 *
 * A run starts with any block, were it too large itself, and takes the next one as long as that block,
 * and the sum with it, are below 1 GiB (2^30). If `balance` is set, a block of 20 MiB or more must also
 * be balanced (`IsBalancedValue`) against the smallest block of the run so far or against their sum.
 *
 * So a run of length 1 says that no two neighbours may be merged. Fewer than two sizes give 0 and a count of
 * 0. Linear time; with `balance` it allocates a record for each size. At most 2^31 - 1 sizes count. */
UTILITY_API int MergeSelect(const std::vector<unsigned long>& sizes, int& count, bool balance);

#endif
