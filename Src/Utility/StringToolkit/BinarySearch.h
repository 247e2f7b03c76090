#ifndef UTILITY_STRINGTOOLKIT_BINARYSEARCH_H
#define UTILITY_STRINGTOOLKIT_BINARYSEARCH_H

/** @file
 * Searches for an equal entry of a table.
 *
 * Each halving search takes the middle entry of what is left, the lower one of two, and returns the index of
 * the first entry met that equals the key, or -1: among equal entries it may be any, but for one table always
 * the same. The table must be in ascending order and is not changed; in a table out of order an entry may be
 * missed. Counts of 0 or below mean an empty table, whose pointer is not read. Logarithmic, without
 * allocation, thread-safe. */

#include <string>
#include <vector>

#include "../UtilityExport.h"

/** The index of `key` in the `count` numbers of `table`, or -1. */
UTILITY_API int BinarySearch(int key, int* table, int count);

/** The index of a number exactly equal to `key`, or -1; a NaN is never found. */
UTILITY_API int BinarySearch(double key, const std::vector<double>& table);

/** The index of a string equal to `key` but for the case of ASCII letters, or -1.
 *
 * The table holds `count` NUL-terminated strings, none of them null, ordered by their unsigned bytes with
 * ASCII capitals read as small letters (as strcasecmp does in the C locale; the locale in force changes
 * nothing). */
UTILITY_API int BinarySearch(const char* key, const char** table, int count);

/** The same over a vector of strings. */
UTILITY_API int BinarySearch(const char* key, const std::vector<std::string>& table);

/** 1 when one of the `count` strings of `table`, in any order, equals `key` byte for byte, else 0. Compares
 * them one after the other. */
UTILITY_API int IsExists(const char* key, const char** table, int count);

#endif
