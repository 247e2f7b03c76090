#ifndef UTILITY_CODETRANS_DUMP_H
#define UTILITY_CODETRANS_DUMP_H

/** @file
 * Bytes in hexadecimal on standard output, for looking at text that no terminal shows. */

#include "../../Utility/UtilityExport.h"

/** Writes each byte of the NUL-terminated `text` as two upper-case hexadecimal digits, without blanks, then a
 * line end.
 *
 * The line goes to stdio's stdout in one call, so lines of several threads do not mix. Not null; an empty
 * text gives an empty line. Allocates the line. */
UTILITY_API void dump_utf8(unsigned char* text);

/** Writes the first `byte_count` bytes at `text`, zero bytes too, in the form of dump_utf8.
 *
 * The count is in bytes, not in wide characters: 4 times as many. Bytes stand in the machine's order. `text`
 * may be null when the count is 0. */
UTILITY_API void dump_unicode(wchar_t* text, unsigned long byte_count);

#endif
