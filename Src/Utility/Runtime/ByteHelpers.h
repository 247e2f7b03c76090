#ifndef UTILITY_RUNTIME_BYTEHELPERS_H
#define UTILITY_RUNTIME_BYTEHELPERS_H

/** @file
 * Tests of single bytes, and edits of byte strings.
 *
 * A letter is an ASCII letter and a digit an ASCII digit, whatever the locale. All but countChar work byte by
 * byte: in double-byte text they also meet trail bytes, of which many look like letters (40 to 7E). Lengths
 * count bytes, and a text that comes with its length needs no NUL and may hold some; it may be null if the
 * length is 0. Each takes one pass; nothing keeps state, so that any thread may call at any time. */

#include <string>

#include "../UtilityExport.h"

/** `byte` in upper case if it is a letter, else itself. */
UTILITY_API char GetUpperLetter(char byte);

/** `byte` in lower case if it is a letter, else itself. */
UTILITY_API char GetLowerLetter(char byte);

/** Whether `byte` is a letter. */
UTILITY_API bool isLetter(char byte);

/** Whether `byte` is a digit. */
UTILITY_API bool isDigit(char byte);

/** Folds the letters among the first `length` bytes of `text` to lower case. */
UTILITY_API void toLower(char* text, unsigned int length);

/** Folds the letters of `text` to lower case. */
UTILITY_API void toLower(std::string& text);

/** Takes every `byte` out of the first `length` bytes of `text`, fills up with NULs at their end, and returns
 * how many are kept. A null text gives 0. The five bytes "a-b-c" without "-" become "abc" and two NULs, and
 * the result is 3. */
UTILITY_API unsigned int deleteChar(char* text, unsigned int length, char byte);

/** Number of characters with the given code among the first `length` bytes of the double-byte text `text`.
 *
 * A byte from 80 up makes a character with the byte behind it, if there is one within the length, any other
 * byte alone. **The bytes count as signed numbers** from -128 to 127: the code of two is the first × 256 +
 * the second, the code of one is its own value, and `code` is that as an unsigned number of 32 bits. So "a"
 * has the code 97, and 中 (D6 D0) the code -42 × 256 - 48, which is FFFFD5D0. */
UTILITY_API unsigned int countChar(char const* text, unsigned int length, unsigned int code);

/** A copy of `text` with every `byte` replaced by the whole of `replacement`, which is NUL-terminated, not
 * null, and may be empty. Allocates once.
 *
 *     replaceChar("a/b/c", '/', "::")     // a::b::c */
UTILITY_API std::string replaceChar(std::string const& text, char byte, char const* replacement);

#endif
