#ifndef UTILITY_STRINGTOOLKIT_STRLINE_H
#define UTILITY_STRINGTOOLKIT_STRLINE_H

/** @file
 * A line reader that can take a record framed by pairs of '^' as one line. */

#include "../UtilityExport.h"

/** Cuts the next line off the writable, NUL-terminated `text`, and returns where it starts, or null when none
 * is left.
 *
 * Spaces, tabs, line feeds and carriage returns in front of the line are skipped, so no line is blank;
 * trailing blanks stay. The line ends in front of the first carriage return or line feed: a NUL is written
 * there, `*saved` receives the byte under it and `*next` its place. The caller puts the byte back and goes on
 * from there:
 *
 *     while ((line = StrLine(text, &next, &saved, nullptr, false)) != nullptr) {
 *         …
 *         if ((text = next) != nullptr) *next = saved;
 *     }
 *
 * A line that ends with the text sets `*next` to null and `*saved` to 0, and so does a null result (`text`
 * null, empty or blank).
 *
 * With `allow_quoted`, "^^" in the line opens a record when it is the first '^' of the line, not the last
 * thing in front of the line break, and the next '^' behind the first byte of its content starts another
 * "^^". At the start of the line the record is the line: the result is its content, line breaks included,
 * `*quoted` becomes 1, `*next` stands behind the closing pair (even where the text ends there), and the first
 * '^' of that pair stays overwritten with NUL. Elsewhere the line ends in front of the pair, and the next
 * call returns the record. "^^a\nb^^\nc" gives "a\nb" and "c"; "x ^^y^^" gives "x " and "y"; "^^y" is an
 * ordinary line. A record holds at least one byte, so "^^^^" is an ordinary line too.
 *
 * `quoted` may be null and else receives 1 for a record, 0 for everything else; `next` and `saved` must not
 * be null. The text may be in any encoding that extends ASCII, but a GBK trail byte may be '^' (0x5E). No
 * allocation and no state; reading a whole text is linear, however its '^' are strewn. */
UTILITY_API char* StrLine(char* text, char** next, char* saved, int* quoted, bool allow_quoted);

#endif
