#ifndef UTILITY_COMPACTSTORAGE_STATICSTR_H
#define UTILITY_COMPACTSTORAGE_STATICSTR_H

/** @file
 * A pool that many strings are appended to, one behind the other, and its file form. */

#include <cstddef>
#include <cstdio>

#include "../UtilityExport.h"

/** A pool of NUL-terminated strings, in whatever encoding. Each is known by its offset in bytes, which stays
 * good while the pool grows, and across `Write` and `Read`.
 *
 *     CStaticStr pool;
 *     pool.AddString("ab");         // 0
 *     pool.AddString("c");          // 3
 *     pool.GetStr(3);               // "c", until the next AddString or Read
 *
 * File form: the number of bytes in 8 bytes, low byte first on every machine, then the bytes, NULs included.
 * It stands wherever the stream stands, between other things of the caller's.
 *
 * The fields are for looking at. The block grows by 1,024 bytes more than needed, never shrinks, and is of
 * the malloc family. A pool can be moved, which leaves an empty one behind, and not be copied. One thread at
 * a time. */
class UTILITY_API CStaticStr {
public:
    /** An empty pool with room for 10,240 bytes. */
    CStaticStr();
    ~CStaticStr();
    CStaticStr(const CStaticStr&) = delete;
    CStaticStr& operator=(const CStaticStr&) = delete;
    /** Takes over the strings of `other`, which is then empty. */
    CStaticStr(CStaticStr&& other) noexcept;
    /** The same, in place of the strings held. */
    CStaticStr& operator=(CStaticStr&& other) noexcept;

    /** Appends a copy of `text`, which may lie in the pool itself, and returns its offset. Equal strings are
     * stored again.
     *
     * If the offset would be beyond 2^31 - 1, or memory runs out, the pool stays as it was and the result is
     * -1. */
    int AddString(char const* text);

    /** The string at `offset`, which is not checked. Good until the pool next changes. */
    char const* GetStr(int offset) const;

    /** Writes the pool to a stream open for binary writing. Failures show in the stream's error indicator. */
    void Write(std::FILE* stream) const;

    /** Replaces the pool by the one that stands at the position of a stream open for binary reading.
     *
     * **A file that was cut short is not refused**: the size is what the file says, and of the bytes that did
     * not arrive, those of the pool before stay, and others are 0. A size that is cut short itself leaves the
     * pool as it was, and one out of all proportion to what follows makes it empty: memory is allocated as
     * the bytes arrive, at most 1 MiB or twice their number, so a damaged size does no harm. A NUL always
     * follows the last byte, so `GetStr` is safe for every offset from 0 to the size, whatever the file held.
     * The stream is never positioned. */
    void Read(std::FILE* stream);

    char* m_pBuf;            /**< the strings, each with its NUL */
    std::size_t m_nSize;     /**< bytes in use */
    std::size_t m_nCapacity; /**< bytes that the block has room for */
};

#endif
