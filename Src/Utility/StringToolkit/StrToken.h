#ifndef UTILITY_STRINGTOOLKIT_STRTOKEN_H
#define UTILITY_STRINGTOOLKIT_STRTOKEN_H

/** @file
 * A tokeniser that keeps its position in the caller's pointer. */

#include "../UtilityExport.h"

/** Cuts the next token off the writable, NUL-terminated `text`; a delimiter is any byte of the set `delims`.
 *
 * Leading delimiters are skipped, and the one delimiter byte behind the token is overwritten with NUL and
 * consumed: `*next` then stands behind it. A token that runs to the end of the text sets `*next` to null.
 * Call it with the text first, then with what it left in `*next`, until it returns null:
 *
 *     for (char* token = StrToken(text, ",", &next); token != nullptr; token = StrToken(next, ",", &next)) …
 *
 * The result points into `text` and belongs to it. Only a null `text` gives null, and then leaves `*next`
 * alone: unlike with strtok, no position is remembered. A text that is empty or holds nothing but delimiters
 * therefore gives one empty token: "a,b" gives "a", "b", and "a,b," gives "a", "b", "".
 *
 * `delims` and `next` must not be null. An empty set makes the whole text one token. Bytes are compared, not
 * characters: delimiters below 0x40 are safe in GBK text, any ASCII delimiter in UTF-8; others may cut a GBK
 * character whose trail byte equals them. Linear in the bytes stepped over, allocates nothing, keeps no
 * state. */
UTILITY_API char* StrToken(char* text, const char* delims, char** next);

#endif
