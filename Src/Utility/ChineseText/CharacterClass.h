#ifndef UTILITY_CHINESETEXT_CHARACTERCLASS_H
#define UTILITY_CHINESETEXT_CHARACTERCLASS_H

/** @file
 * Which class of characters a double-byte (GBK, GB2312) string is made of, and the lookup in a character
 * list.
 *
 * The strings are NUL-terminated and must not be null. A byte with its top bit set is the lead byte of a
 * two-byte character; most tests look at lead bytes only and take any trail byte. Nothing here allocates,
 * reads the locale or keeps state, so every function may run in any number of threads; each is one pass that
 * stops where its answer is certain (IsAllSingleByte measures the string first when no length is given). */

#include <cstddef>

#include "../UtilityExport.h"

/** Where `ch` stands in the character list `list`, or null.
 *
 * Both are NUL-terminated and compared byte for byte, whatever their encoding. Only the first occurrence
 * counts, and only at an even byte offset, so that in a list of two-byte characters no match crosses from
 * one to the next; an occurrence at an odd offset gives null even where another follows at an even one. An
 * empty `ch` gives null.
 *
 *     CC_Find("abcb", "c")  points at offset 2
 *     CC_Find("abcb", "b")  is null: the first b stands at offset 1 */
UTILITY_API const char* CC_Find(const char* list, const char* ch);

/** Length in bytes of the run of Chinese characters (lead byte B0 to F7) that `text` starts with.
 *
 * A lone lead byte at the very end counts as a whole character: the result is then one more than the length
 * of the text, so check it before using it as an index. */
UTILITY_API std::size_t GetCCPrefix(unsigned char* text);

/** Whether every character of `text` is a Chinese character (lead byte B0 to F7). True for the empty text,
 * false for any text with an odd number of bytes. */
UTILITY_API bool IsAllChinese(unsigned char* text);

/** Whether no character of `text` is a Chinese character (lead byte B0 to F7). True for the empty text. The
 * byte 80 counts as a character of its own. */
UTILITY_API bool IsAllNonChinese(unsigned char* text);

/** Whether every byte of `text` is below 80 (hexadecimal). `length` counts bytes, NUL bytes among them; 0
 * means up to the NUL. With a length the text needs no NUL. */
UTILITY_API bool IsAllSingleByte(unsigned char* text, unsigned long length);

/** Whether `text` is made of index numerals (lead byte A2), none or more, and ASCII letters behind them, none
 * or more. True for the empty text. */
UTILITY_API bool IsAllIndex(unsigned char* text);

/** Whether every character of `text` is a full-width Latin letter (GBK A3 C1 to A3 DA, A3 E1 to A3 FA). ASCII
 * letters are none. True for the empty text. */
UTILITY_API bool IsAllLetter(unsigned char* text);

/** Whether every character of `text` has the lead byte A1 (general symbols) or A3 (full-width ASCII).
 * Full-width letters and digits count, ASCII does not. True for the empty text. */
UTILITY_API bool IsAllDelimiter(unsigned char* text);

/** Whether `character`, one character as a string, is a delimiter: two bytes of which the first is A1 or A3,
 * or one of the ASCII bytes tab, carriage return, line feed, blank and these:
 *
 *     . , ( ) { } [ ] : ; " ' < > ? / ~ @ # $ % ^ & * _ - + = `
 *
 * Any other length is false; at most three bytes are read. */
UTILITY_API bool IsDelimiter(const char* character);

#endif
