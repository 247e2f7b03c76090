#ifndef UTILITY_STRINGTOOLKIT_SPLITTING_H
#define UTILITY_STRINGTOOLKIT_SPLITTING_H

/** @file
 * Three ways to cut a text into a list of strings: at a separator string, at any byte of a set, and into
 * tokens free of leading blanks.
 *
 * All of them replace what the list held, never add an empty piece, and compare bytes, not characters: a
 * delimiter below 0x40 is safe in GBK text, any ASCII delimiter in UTF-8. Texts end at their NUL and must not
 * lie in the list. Each is linear in the text and allocates for the pieces alone; no state is kept, so any
 * thread may call them at any time. */

#include <cstddef>
#include <string>
#include <vector>

#include "../UtilityExport.h"

/** Cuts `text` at every occurrence of the whole string `separator`; false, with an empty list, when `text` is
 * null or empty.
 *
 * Occurrences are taken from left to right and do not overlap. A null or empty separator, or one that does
 * not occur, gives the whole text as one piece; a text made only of separators gives none, and true.
 *
 *     gfn_bSplit("a--b----c", pieces, "--")     // "a", "b", "c" */
UTILITY_API bool gfn_bSplit(const char* text, std::vector<std::string>& pieces, const char* separator);

/** Cuts the first 10,000 bytes of `text` at every byte of the set `delimiters`; false, with an empty list,
 * when `text` is null or empty.
 *
 * Whatever follows the first 10,000 bytes is ignored, and a character that straddles that border is cut in
 * two. A null or empty set gives them as one piece; a text made only of delimiters gives none, and true.
 *
 *     gfn_bSplitOR(" a, b", pieces, ", ")     // "a", "b" */
UTILITY_API bool gfn_bSplitOR(const char* text, std::vector<std::string>& pieces, const char* delimiters);

/** Cuts `text` into the tokens of CStrToken and returns how many the list then holds.
 *
 * Spaces, tabs, carriage returns and bytes of the set `delimiters` are skipped in front of a token, and only
 * a delimiter ends it; then the carriage returns and line feeds at its end are dropped, and a token of which
 * nothing is left is left out. With "\n" as delimiters this gives the lines that are not blank, without their
 * line ends and leading blanks; blanks at the end of a line stay. Neither `text` nor `delimiters` may be
 * null.
 *
 *     GetStrVector(" a b, ,c\r\n", ",", pieces) == 2     // "a b", "c" */
UTILITY_API std::size_t GetStrVector(const char* text, const char* delimiters, std::vector<std::string>& pieces);

#endif
