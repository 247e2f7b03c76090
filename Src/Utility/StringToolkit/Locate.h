#ifndef UTILITY_STRINGTOOLKIT_LOCATE_H
#define UTILITY_STRINGTOOLKIT_LOCATE_H

/** @file
 * Comparisons that overlook blanks and line breaks.
 *
 * Texts are NUL-terminated, not null, and compared byte for byte; positions and lengths count bytes from the
 * start of the text given. All three functions are linear in their texts and keep no state. */

#include <string>

#include "../UtilityExport.h"

/** Looks for `pattern` in `text` from byte `offset` on, overlooking spaces, line feeds and carriage returns
 * in both.
 *
 * Found: returns 0, and the pattern occupies the text from `start` up to, not including, `end`. Not found:
 * returns -1, and `start` and `end` are 0; so it is for a pattern without anything but blanks. Where the text
 * ends inside a match, the result is the number of pattern bytes passed until then, blanks included, and
 * `start` and `end` (which is the end of the text) enclose the part that is there; `end` is taken from
 * `offset`, for a caller whose next piece of text goes on from here. A negative `offset` becomes 0 first; it
 * must not lie behind the NUL.
 *
 *     offset = 0: StrLocate("xx ab\nc yy", "a b c", start, end, offset) == 0, start 3, end 7
 *     offset = 0: StrLocate("xxab", "abcd", start, end, offset) == 2, offset -4
 *
 * A pattern with blanks at its end that ends with the text counts as cut short. Allocates a table of the
 * pattern's length. */
UTILITY_API int StrLocate(const char* text, const char* pattern, unsigned long& start, unsigned long& end, int& offset);

/** Whether `b` begins like `a`, give or take blanks (space, tab, line feed, carriage return), tags "<…>" in
 * `a` and marks "[…]" in `b` of up to 15 bytes.
 *
 * True when one of them ends, or `maximum` bytes agree (-1 sets no limit), before they differ and at least
 * one byte agreed. Where they differ: true when `a`, if longer than 2 bytes, is found anywhere in `b` as by
 * StrLocate, or when a positive `maximum` is given and `b` ends with at least the first `maximum` bytes of it,
 * here with its blanks counted; and else when more than 3 of the bytes that agreed were ASCII. `position`
 * receives where in `b` the located `a` starts, and 0 in every other case.
 *
 *     StrMatch("<b>Hello", "Hello world", position, -1)     // true
 *     StrMatch("abcdef", "abcxyz", position, 3)             // true: 3 bytes agree */
UTILITY_API bool StrMatch(const char* a, const char* b, unsigned long& position, int maximum);

/** Sets `common` to the bytes that `a` and `b` begin with alike when their spaces, line feeds and carriage
 * returns are left out, and returns its length. Neither text may lie in `common`.
 *
 *     prefixMatch("ab c", "a bcd", common) == 3, common == "abc" */
UTILITY_API unsigned int prefixMatch(const char* a, const char* b, std::string& common);

#endif
