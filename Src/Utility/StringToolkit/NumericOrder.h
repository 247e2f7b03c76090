#ifndef UTILITY_STRINGTOOLKIT_NUMERICORDER_H
#define UTILITY_STRINGTOOLKIT_NUMERICORDER_H

/** @file
 * Orders strings by a number inside them, so that "doc3" comes before "doc12". */

#include <string>
#include <vector>

#include "../UtilityExport.h"

/** The number read from a string, and the place of the string in its list. */
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
struct UTILITY_API _index_digit {
    /** Place before sorting, from 0. */
    int index;
    /** The number. */
    int digit;

    /** Compares the numbers alone. */
    bool operator<(const _index_digit& other) const;
};

/** Orders `list` by the number that stands in each string behind as many bytes as `prefix` is long, smallest
 * first.
 *
 * Only the length of `prefix` counts, not its bytes; it must not be null. The number is read as by atoi:
 * blanks and one sign in front are accepted, the first byte that is no digit ends it, and without digits it
 * is 0, as it is for a string shorter than the prefix. Beyond the range of int it wraps around, beyond that
 * of long it is the nearest long first. Equal numbers keep their order. The strings, at most 2,147,483,647,
 * are moved, not copied; thread-safe over separate lists.
 *
 *     list {"doc12", "doc3", "doc7"}: SortByNumber(list, "doc")     // "doc3", "doc7", "doc12" */
UTILITY_API void SortByNumber(std::vector<std::string>& list, const char* prefix);

#endif
