#ifndef UTILITY_CHINESETEXT_TEXTTIDYING_H
#define UTILITY_CHINESETEXT_TEXTTIDYING_H

/** @file
 * Half-width forms, white space and indents.
 *
 * Texts are NUL-terminated and, where nothing else is said, not null. White space means blank, tab, carriage
 * return and line feed. The functions that rewrite a text in place never lengthen it. None keeps state; any
 * number of threads may call, each with texts of its own. */

#include <cstddef>
#include <string>

#include "../UtilityExport.h"

/** Replaces full-width characters of the GBK `text` by ASCII, in place; true when something was replaced.
 *
 * Full-width digits and letters (A3 B0 to A3 B9, A3 C1 to A3 DA, A3 E1 to A3 FA) become their ASCII forms.
 * Any other character, stepped as by Getchar, is looked up with CC_Find in a fixed list of punctuation marks
 * that is stored as UTF-8; found at byte offset 2k, it becomes byte k of a list of 63 ASCII marks, and stays
 * as it is when k is beyond them. As the list is UTF-8, most GBK punctuation is not found, while a character
 * whose two bytes happen to stand there is (冀, BC BD, becomes "!"), and so may be a lone lead byte at the
 * very end of the text.
 *
 *     A3 C1 A3 B1 (full-width A and 1) becomes "A1", and the result is true */
UTILITY_API bool QuanJiao2BanJiao(char* text);

/** Copies `source` to `tidied` without the white space that Chinese text does not need; replaces what
 * `tidied` held.
 *
 * Carriage returns and line feeds at the end go (a text of nothing else keeps one, which then counts as other white
 * space and goes, too). Other white space stays, as it is, when the byte copied
 * before it or the source byte behind it is an ASCII letter. `source` must not point into `tidied`.
 * Allocates at most once.
 *
 *     "ab cd" stays; a blank between two Chinese characters goes */
UTILITY_API void TextStandard(const char* source, std::string& tidied);

/** Appends a carriage return, a line feed and `count` times the byte `fill` to `text`; returns `count` as
 * int. */
UTILITY_API int TextIndent(std::string& text, unsigned int count, char fill);

/** Number of bytes of `text`, the NUL not among them, that are not white space. */
UTILITY_API std::size_t strlen_nospace(const char* text);

/** Turns every run of white space in `text` into one blank and removes it at both ends, in place; returns
 * `text`. Null gives null.
 *
 *     "  a\t\tb " becomes "a b" */
UTILITY_API char* StrNormalize(char* text);

#endif
