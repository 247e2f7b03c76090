#ifndef UTILITY_STRINGTOOLKIT_WORDPOSITION_H
#define UTILITY_STRINGTOOLKIT_WORDPOSITION_H

/** @file
 * What stands around a word, and what stands between two markers.
 *
 * Both functions compare byte for byte, take NUL bytes as bytes, and are linear and thread-safe. */

#include <string>

#include "../UtilityExport.h"

/** Cuts `text` around the first occurrence of `word`; true when something but blank space stands in front of
 * it.
 *
 * `before` and `after` receive what stands in front of the word and behind it, both trimmed as by
 * gfn_bTrimWord (GBK text). Where the word does not occur, or is empty, `before` receives the whole text,
 * untrimmed, and `after` nothing, and the result is true; an empty text empties both and gives false.
 * `before` or `after` may be the same string as `text`.
 *
 *     gfn_bGetWordPos("price: 12", before, after, ":")     // true, "price", "12" */
UTILITY_API bool gfn_bGetWordPos(const std::string& text, std::string& before, std::string& after, std::string word);

/** Whether byte `position` of `text` stands between an opening and a closing marker: one opens at or before
 * it, the next `close` starts at or behind it, and neither is that opening closed before it nor does another
 * open behind it before that `close`.
 *
 * The first byte of either marker counts as inside: in "a(b)c" the positions 1 to 3 are. An empty marker
 * stands everywhere up to the end of the text. A position beyond the text is outside. Allocates only for an
 * opening marker longer than 16 bytes. */
UTILITY_API bool IsInRange(const std::string& text, std::string open, std::string close, unsigned int position);

#endif
