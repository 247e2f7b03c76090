#ifndef UTILITY_STRINGTOOLKIT_CHARVECTOR_H
#define UTILITY_STRINGTOOLKIT_CHARVECTOR_H

/** @file
 * Cuts a text into its characters. */

#include <cstddef>
#include <string>
#include <vector>

#include "../UtilityExport.h"

/** Replaces `chars` with the characters of the NUL-terminated `text`, one string each, and returns their
 * number.
 *
 * With `utf8` the lead byte alone gives the length of a character (1 to 6 bytes, a stray continuation byte
 * counts as 1); otherwise the text is GBK, where a byte with its top bit set and the byte after it are one
 * character. In both, a character that the end of the text cuts short is kept as it is. The strings joined
 * give the text again. Null counts as empty. `text` must not lie in `chars`. One pass; allocates the vector's
 * growth only, since a character fits a short string.
 *
 *     Str2CharVector("a中b", chars, true) == 3     // with the text in UTF-8 */
UTILITY_API std::size_t Str2CharVector(const char* text, std::vector<std::string>& chars, bool utf8);

#endif
