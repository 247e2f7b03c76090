#ifndef UTILITY_INTEGERSETS_SETOPERATIONS_H
#define UTILITY_INTEGERSETS_SETOPERATIONS_H

/** @file
 * Membership, intersection and difference of vectors of integers. Vectors that are called sorted are in
 * ascending order and may hold equal elements. One pass each; no global state, so any thread may call at any
 * time. */

#include <cstddef>
#include <vector>

#include "../UtilityExport.h"

/** Whether `value` is in `values`, in whatever order that is. */
UTILITY_API bool IsExists(int value, const std::vector<int>& values);

/** Index of the first element of `sorted` that is not less than `value`, or -1 if all are less or there is
 * none.
 *
 * Elements are looked at from the front, so the result is the same first element in a vector out of order;
 * for long sorted vectors std::lower_bound is faster. */
UTILITY_API int LocateIndex(int value, const std::vector<int>& sorted);

/** Appends to `common` the elements of `sorted_a` that, **with `offset` added**, stand in `sorted_b`, and
 * returns how many elements `common` has then.
 *
 *     Intersection({1, 4, 9}, {2, 5, 7}, 1, common);   // appends 1 and 4
 *
 * **`common` is not cleared first.** An element that stands m times in one vector and n times in the other is
 * appended min(m, n) times. The sums may lie outside the range of int. `common` must be neither of the other
 * two. */
UTILITY_API std::size_t Intersection(const std::vector<int>& sorted_a, const std::vector<int>& sorted_b, int offset,
                                     std::vector<int>& common);

/** Removes the elements of `sorted_b` from `sorted_a`, each of them at most once (1 2 2 3 without 2 is 1 2
 * 3), and returns whether there was anything to remove. */
UTILITY_API bool Not(std::vector<int>& sorted_a, const std::vector<int>& sorted_b);

#endif
