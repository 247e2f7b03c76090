#ifndef UTILITY_CHINESETEXT_CHARACTERSTEPPING_H
#define UTILITY_CHINESETEXT_CHARACTERSTEPPING_H

/** @file
 * Stepping over a text character by character or line by line.
 *
 * Double-byte text (GBK, GB2312, Big5) is stepped by one rule: a byte with its top bit set and the byte
 * after it are one character, every other byte is one. Texts are NUL-terminated and, where nothing else is
 * said, not null; a step never reads past the NUL. Nothing here allocates, reads the locale or keeps state,
 * so every function may run in any number of threads. Outputs must not overlap the text. */

#include <cstddef>

#include "../UtilityExport.h"

/** Copies the double-byte character at the start of `text` to `unit`, with a NUL behind it, and returns its
 * length in bytes: 0 at the end of the text, else 1 or 2. A lead byte right before the NUL is a character of
 * one byte. `unit` holds at least three bytes. */
UTILITY_API std::size_t Getchar(const char* text, char* unit);

/** Puts the code of the double-byte character at the start of `text` into `*code` and returns its length in
 * bytes.
 *
 * Two bytes: lead byte × 256 + trail byte. One byte: the byte read as a signed number, so a lead byte right
 * before the NUL gives a negative code. End of the text: code -1, length 0.
 *
 *     Getchar("\xB0\xA1", &code) == 2, code == 0xB0A1        Getchar("\xB0", &code) == 1, code == -80 */
UTILITY_API std::size_t Getchar(const char* text, int* code);

/** Copies the UTF-8 sequence at the start of `text` to `buffer`, with a NUL behind it, and returns its length
 * in bytes: 0 at the end of the text, else 1 to 6.
 *
 * The lead byte alone decides the length, in the scheme of RFC 2279 with up to six bytes; a continuation
 * byte in its place is a character of one byte. The bytes that follow are not examined, only cut at the NUL.
 * `buffer` holds at least seven bytes. */
UTILITY_API std::size_t GetUTF8Char(const char* text, char* buffer);

/** The code of the double-byte character at byte `position` of `text`, and `position` moved behind it.
 *
 * Two bytes give lead byte × 256 + trail byte; one byte gives itself (0 to 255), an upper-case ASCII letter
 * its lower-case form. A lead byte at `length` - 1 is a character of one byte. `length` counts bytes and
 * `position` must be below it; the text needs no NUL and may hold NUL bytes.
 *
 *     position = 0: GetCharCode("A", position, 1) == 'a', position == 1 */
UTILITY_API int GetCharCode(const char* text, unsigned long& position, unsigned long length);

/** Copies the first line of `text`, without its line break, to `line`, with a NUL behind it, and returns
 * where the next line that is not empty starts, or null when none does.
 *
 * Carriage returns and line feeds end a line; all that follow the line are skipped. A text that starts with
 * one gives an empty first line. `line` must hold the longest line and its NUL. A null `text` gives an empty
 * line and null.
 *
 *     sgets("a\r\n\r\nb", line)  fills line with "a" and returns the position of b */
UTILITY_API const char* sgets(const char* text, char* line);

/** Counts the characters of `text`: UTF-8 when `utf8` is true (stepped as by GetUTF8Char), double-byte
 * otherwise (as by Getchar). Returns the sum of both counts, converted to int.
 *
 * `multi_byte` receives the characters of more than one byte, `single_byte` the others without blanks, tabs,
 * carriage returns and line feeds. */
UTILITY_API int CharStat(const char* text, unsigned long& single_byte, unsigned long& multi_byte, bool utf8);

#endif
