#ifndef UTILITY_STRINGTOOLKIT_PREFIXSEARCH_H
#define UTILITY_STRINGTOOLKIT_PREFIXSEARCH_H

/** @file
 * Searches by prefix in a dictionary: an array of NUL-terminated strings, none of them null, in the order of
 * strcmp.
 *
 * The dictionary is not changed; in one out of order an entry may be missed. Lengths count bytes without the
 * NUL, and bytes are compared, not characters. Neither function allocates or keeps state. */

#include "../UtilityExport.h"

/** The index of the shortest entry from `first` to `last`, both included, that starts with the first `n`
 * bytes of `key`; -1 when none does, when `first` is above `last`, or when `table` is null.
 *
 * Of several entries of that length: the one that halving the range meets first, or else the nearest below
 * that, or else the nearest above. A key shorter than `n` bytes is matched with its NUL, that is, as a whole.
 * The search is logarithmic; then the entries with the same prefix are passed one by one until one is no
 * longer than the prefix itself. */
UTILITY_API long BinaryPrefixSearch(const char* key, unsigned long n, const char** table, unsigned long first,
                                    unsigned long last);

/** The length of the longest of the `count` entries that `text` starts with, and its index in `*index`; 0,
 * and -1 in `*index`, when it starts with none or the table is empty. The empty entry is no match.
 *
 *     const char* words[] = {"中华", "中华人民共和国"};
 *     MaxMatching("中华人民共和国万岁", words, 2, &index) == 21, index == 1     // in UTF-8
 *
 * Of equal entries it is the one that BinaryPrefixSearch gives for the whole table and that length. Costs a
 * few logarithmic searches, each for a shorter beginning of the text, however many entries share it, and
 * looks no further into the text than the entries are long. */
UTILITY_API long MaxMatching(const char* text, const char** table, unsigned long count, long* index);

#endif
