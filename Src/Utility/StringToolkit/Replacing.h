#ifndef UTILITY_STRINGTOOLKIT_REPLACING_H
#define UTILITY_STRINGTOOLKIT_REPLACING_H

/** @file
 * Replaces every occurrence of a substring. */

#include <cstddef>
#include <string>

#include "../UtilityExport.h"

/** Replaces every occurrence of `old_text` in `text` with `new_text` and returns how many there were.
 *
 * Both are NUL-terminated. Occurrences are found byte by byte, case-sensitively, from left to right, and do
 * not overlap; the inserted text is not searched again, so replacing "a" with "aa" in "aaa" gives "aaaaaa"
 * and 3. In GBK text an occurrence may begin in the middle of a character. An empty `text`, or a null or
 * empty `old_text`, gives 0. `new_text` must not be null and may be empty, which deletes. Both may lie in
 * `text`. Linear in the text before and after; thread-safe. */
UTILITY_API std::size_t gfn_vReplaceSubstr(std::string& text, const char* old_text, const char* new_text);

#endif
