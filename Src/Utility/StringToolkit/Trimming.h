#ifndef UTILITY_STRINGTOOLKIT_TRIMMING_H
#define UTILITY_STRINGTOOLKIT_TRIMMING_H

/** @file
 * Removes a repeated byte, or blank space, from both ends of a string. NUL bytes inside a string are bytes
 * like others. Both functions work in place, in linear time, without allocation and without state. */

#include <string>

#include "../UtilityExport.h"

/** Removes every leading and every trailing `byte`; a string that holds nothing else becomes empty. A byte of
 * 0x40 or above may be the trail byte of the last GBK character, which then loses it. */
UTILITY_API void trim(std::string& text, char byte);

/** Removes blank space from both ends of GBK text; false when `text` was empty already, else true, even when
 * nothing was removed.
 *
 * Blank space is any mix of space, tab, carriage return, line feed and the double-byte spaces A1 A1 (the
 * ideographic space) and A3 A0. The end is read backwards without knowing where characters begin, so two last
 * bytes that equal a double-byte space are removed even where a damaged text has them belong to two
 * characters. */
UTILITY_API bool gfn_bTrimWord(std::string& text);

#endif
