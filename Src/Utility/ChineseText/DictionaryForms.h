#ifndef UTILITY_CHINESETEXT_DICTIONARYFORMS_H
#define UTILITY_CHINESETEXT_DICTIONARYFORMS_H

/** @file
 * What looking words up in a dictionary needs: marks as a dictionary spells them, and how far two entries
 * agree. Nothing here allocates or keeps state; any number of threads may call. */

#include <cstddef>

#include "../UtilityExport.h"

/** Writes the full-width form of the ASCII mark `mark` to `form` and returns true; writes any other byte as
 * it is and returns false.
 *
 * The marks are `.,;:?!%(){+}[]/=`. The form is UTF-8, three bytes; the full stop becomes 。 (U+3002), the
 * others their full-width forms (U+FF0C for the comma and so on). A NUL follows in either case: `form` holds
 * at least four bytes. A `mark` of NUL gives an empty text and false. */
UTILITY_API bool Delimiter2DictFormat(char mark, char* form);

/** Length in bytes of the prefix that `first` and `second` have in common; in double-byte text and UTF-8 it
 * may end inside a character. Both are NUL-terminated and not null. Stops at the first difference.
 *
 *     MaxPrefix("abc", "abd") == 2 */
UTILITY_API std::size_t MaxPrefix(const char* first, const char* second);

#endif
