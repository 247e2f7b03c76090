#ifndef UTILITY_CHINESETEXT_CHARACTERLISTS_H
#define UTILITY_CHINESETEXT_CHARACTERLISTS_H

/** @file
 * How many characters of a text belong to a list. */

#include <cstddef>

#include "../UtilityExport.h"

/** Number of the characters of `text` that stand in the character list `list`.
 *
 * Both are NUL-terminated and not null, in the same double-byte encoding (GBK, GB2312, Big5); a byte with its
 * top bit set and the byte behind it are one character. `length` counts bytes, 0 means up to the NUL; a
 * character that starts inside the length is read whole. A two-byte character, and a lead byte with only the
 * NUL behind it, counts when CC_Find finds it in the list, which misses a character whose bytes come up
 * earlier across two others; an ASCII byte counts wherever in the list it stands. A length beyond the NUL
 * would read beyond it.
 *
 *     GetCharCount("0123456789", "7 or 8", 0) == 2
 *
 * Time grows with the sum of both lengths, not with their product. Nothing is allocated (some four kilobytes
 * of stack are used) and no state is kept; any number of threads may call. */
UTILITY_API std::size_t GetCharCount(const char* list, const char* text, unsigned long length);

#endif
