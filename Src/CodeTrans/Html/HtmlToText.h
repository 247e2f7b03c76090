#ifndef UTILITY_CODETRANS_HTMLTOTEXT_H
#define UTILITY_CODETRANS_HTMLTOTEXT_H

/** @file
 * HTML pages to plain text, and percent escapes.
 *
 * Nothing here allocates, reads the locale or keeps state; any number of threads may call. No pointer may be
 * null. */

#include "../../Utility/UtilityExport.h"

/** Writes the text of an HTML page to `text`, NUL-terminated; `text_length` receives its length in bytes
 * without the NUL. Always returns 0.
 *
 * `html` holds `length` bytes and is NUL-terminated as well: the scanner stops at `length`, but a tag or
 * reference that begins before it may be looked up to the NUL behind it. Going in, `text_length` is the
 * number of bytes after which writing stops (0: no limit), before blanks are squeezed; the test is made once
 * a step and a step writes up to six bytes. So `text` needs room for `text_length` + 6 bytes, or `length` +
 * 6 when there is no limit. `text` and `html` must not overlap.
 *
 * The encoding may be any in which the ASCII bytes stand for themselves, UTF-8, GBK and Big5 among them, but
 * a numeric reference is always written as UTF-8. This is a tolerant scanner, not a parser; what it does not
 * know is copied.
 * - A leading UTF-8 byte-order mark is skipped.
 * - A tag (`<` before an ASCII letter, `/`, `!` or `?`, and a `>` less than 500 bytes on) becomes a blank.
 *   So does a comment, and so does a script with its content where the opening is a bare `<script>`, in any
 *   case, and `</s` follows, or `</S` where the text holds no `</s`. The content of other scripts and of
 *   styles stays. A comment or such a script that does not end leaves its `<` in the text.
 *   Within four bytes of the end of the input a comment counts as a tag, within 15 a script does.
 * - `&lt;` and `&gt;` become `<` and `>`. Any other `&` before an ASCII letter becomes a blank together with
 *   all up to a `;` less than ten bytes after it, be it `&nbsp;` or `&amp;`.
 * - `&#`, a decimal number and a `;` at most ten bytes after the `&` become the character, 127 to 254 a
 *   blank, negative numbers nothing. What is no number, as in `&#x41;`, reads as 0.
 * - `%` and two digits or upper-case letters A to F become the byte they encode.
 * - A bare `nbsp;` goes, unless fewer than five bytes follow its `n`.
 * - Runs of blanks shrink to one blank, and none leads; tabs and line breaks stay.
 * - A zero byte, be it in `html` or from `%00`, `&#0;` or `&#x41;`, ends the text.
 *
 * One pass: the cost grows with `length` alone, whatever the page holds, save that a script whose closing is
 * sought may once be searched up to the NUL.
 *
 *     "a<b>c" becomes "a c", "&#20013;" the UTF-8 bytes of 中, "x<!-- note -->y" becomes "x y" */
UTILITY_API int vHtmlToText(const char* html, unsigned long length, char* text, unsigned long& text_length);

/** The byte that the two hexadecimal digits at `digits` encode, in either case. Other bytes are not refused
 * and give a byte without meaning. `x2c("4a")` is 'J'. */
UTILITY_API char x2c(const char* digits);

/** Decodes the percent escapes in the `length` bytes at `uri` to `decoded`; always returns 0.
 *
 * `%` and the two bytes after it become what x2c makes of them, unchecked; fewer than two bytes after it
 * leave the `%`. A `+` stays. `decoded_length` receives the number of bytes written, at most `length`; no
 * NUL is written. `decoded` may be `uri` itself; a length of 0 or less writes nothing. */
UTILITY_API int iURIDecode(char* uri, int length, char* decoded, int& decoded_length);

#endif
