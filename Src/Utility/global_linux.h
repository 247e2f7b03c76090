#ifndef UTILITY_GLOBAL_LINUX_H
#define UTILITY_GLOBAL_LINUX_H

/** @file
 * Functions that some C libraries offer and those of most Unix-like systems lack. Where the C library has one
 * of them, it is that one that a host gets, with what it makes of other radixes, locales and null texts.
 *
 * `tolower` and `toupper` are always the C library's own, and follow the locale; including this header
 * declares them.
 *
 * The texts are NUL-terminated bytes, must not be null, and are changed in place. The functions here allocate
 * nothing, know nothing of the locale, and keep no state, so that any thread may call them at any time. */

#include <ctype.h>
#include <stdlib.h>
#include <string.h>

#include "UtilityExport.h"

// Untested: the branches for systems whose C library has some of these (_WIN32, __QNX__, __NEWLIB__, __HAIKU__).
#if !defined(_WIN32) && !defined(__QNX__) && !defined(__NEWLIB__)

/** Writes `value` and a NUL to `buffer` and returns that.
 *
 * Radix 8 and 16 show the bits of its two's complement, without a sign and in lower case; every other radix,
 * also 2 and 36, gives signed decimal. 12 bytes always suffice: as many as the lowest value takes in decimal
 * or in octal.
 *
 *     itoa(-1, buffer, 16)     // ffffffff */
UTILITY_API char* itoa(int value, char* buffer, int radix);

#if !defined(__HAIKU__)

/** Folds the ASCII letters of `text` to lower case and returns it. Bytes from 80 up stay, but in double-byte
 * text a trail byte may look like a letter, and is folded. */
UTILITY_API char* strlwr(char* text);

/** Folds the ASCII letters of `text` to upper case and returns it. As above. */
UTILITY_API char* strupr(char* text);

#endif
#endif

#if !defined(_WIN32) && !defined(__QNX__)

/** Reverses the bytes of `text`, which in a text of several bytes a character leaves no text, and returns it.
 * */
UTILITY_API char* strrev(char* text);

#endif

#endif
