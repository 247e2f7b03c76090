#ifndef UTILITY_INTEGERSETS_INTARRAY_H
#define UTILITY_INTEGERSETS_INTARRAY_H

/** @file
 * A pool that many short lists of integers are appended to, one behind the other, and its file form. */

#include <cstddef>
#include <cstdio>
#include <vector>

#include "../UtilityExport.h"

/** Where a list lies in a pool: from position `nStart` up to, and not including, `nEnd`. Its length is nEnd -
 * nStart. */
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
struct UTILITY_API _tIntArray {
    int nStart; /**< pool position of the first value */
    int nEnd;   /**< pool position one past the last value */
};

/** A pool of 32-bit integers. Each list in it is known by the range of positions that `GenerateIntList` gave
 * out, which stays good while the pool grows, and across `Write` and `Read`.
 *
 *     CIntArray pool;
 *     _tIntArray range;
 *     pool.GenerateIntList({2, 4, 8}, range);   // range is 0 to 3
 *     pool.IsExist(4, range);                   // true
 *
 * The pool stores values in the order received, sorts nothing and keeps duplicates; `Or` and `And` need lists
 * in ascending order. In them and in `IsExist`, positions of a range that lie outside the pool hold no value.
 *
 * File form: the number of values, then the values, each as 4 bytes, low byte first on every machine. It
 * stands wherever the stream stands, between other things of the caller's.
 *
 * The fields are for looking at. The block grows by 1,024 values more than needed and is of
 * the malloc family. A pool can be moved, which leaves an empty one behind, and not be copied. One thread at
 * a time. */
class UTILITY_API CIntArray {
public:
    /** An empty pool with room for 1,024 values. */
    CIntArray();
    ~CIntArray();
    CIntArray(const CIntArray&) = delete;
    CIntArray& operator=(const CIntArray&) = delete;
    /** Takes over the values of `other`, which is then empty. */
    CIntArray(CIntArray&& other) noexcept;
    /** The same, in place of the values held. */
    CIntArray& operator=(CIntArray&& other) noexcept;

    /** Appends `values`, sets `range` to where they lie and returns their number.
     *
     * If the pool would come to 2^31 - 1,024 values or more, or memory runs out, it stays as it was: result
     * 0, range empty. */
    int GenerateIntList(const std::vector<int>& values, _tIntArray& range);

    /** Writes the pool to a stream open for binary writing and returns the number of values written:
     * `m_nCount`, or fewer if the stream took no more. */
    std::size_t Write(std::FILE* stream) const;

    /** Replaces the pool by the one that stands at the position of a stream open for binary reading, and
     * returns the number of values read. `m_nCount` and `m_nCapacity` are then what the file says.
     *
     * **A file that was cut short is not refused**: the result is less than `m_nCount`, and what did not
     * arrive is 0. Only a count that is cut short itself, negative or out of all proportion to what follows
     * gives an empty pool and the result 0. Memory is allocated as the values arrive, at most 1 MiB or twice
     * their size, so a damaged count does no harm. The stream is never positioned. */
    std::size_t Read(std::FILE* stream);

    /** The value at `position`; -1, which may also be a value, if there is none. */
    int GetValue(int position) const;

    /** Replaces `values` by the list at `range` and returns its length; -1 for positions outside the pool. */
    std::size_t GetVector(_tIntArray range, std::vector<int>& values) const;

    /** Whether the list at `range` and the `length` integers at `sorted` share a value; both in ascending
     * order. One pass over the two. */
    bool Or(const int* sorted, int length, const _tIntArray& range) const;

    /** Whether `value` is in the list at `range`, in whatever order that is. */
    bool IsExist(int value, const _tIntArray& range) const;

    /** Whether every value of the list at `range` is among the `length` integers at `sorted`; both in
     * ascending order. An empty list gives true. A value that the list holds twice must stand twice in the
     * array. One pass over the two. */
    bool And(const int* sorted, int length, const _tIntArray& range) const;

    int* m_pData;    /**< the values */
    int m_nCount;    /**< number of values in use */
    int m_nCapacity; /**< number of values that the block has room for */
};

#endif
