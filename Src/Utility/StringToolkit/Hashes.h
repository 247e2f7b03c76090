#ifndef UTILITY_STRINGTOOLKIT_HASHES_H
#define UTILITY_STRINGTOOLKIT_HASHES_H

/** @file
 * Hash values of NUL-terminated byte strings, the same on every machine.
 *
 * Each is a function of the bytes in front of the NUL alone, gives 0 for the empty string, wraps around at
 * the width stated, and is one pass without allocation or state. The string must not be null. None of them
 * withstands strings chosen to collide. */

#include "../UtilityExport.h"

/** The 32-bit PJW hash known from the ELF object format, but with bytes of 0x80 and above entering as
 * negative numbers: for ASCII text the value is the published one, for other text in general not. */
UTILITY_API unsigned int UrlHash(const char* text);

/** The same value as UrlHash. */
UTILITY_API unsigned int ELFhash(const char* text);

/** A 64-bit sum over the last 96 bytes that does not tell ASCII capitals from small letters.
 *
 * It starts from the length, (n - 1) × 2^24, or 0xFF000000 above 256 bytes, and adds for the i-th of those
 * bytes, c, counted from 1, (3ic² + 5ic + 7i + 11c) mod 2^24. */
UTILITY_API unsigned long Tianlhash(const char* text);

/** Four bytes, the lowest first, each the exclusive or of every fourth byte of the text; negative when the
 * highest one is 0x80 or more. */
UTILITY_API int HfIp(const char* text);

/** The magnitude of the sum of 3kc over the k-th byte c, counted from 1 and read as a signed number; each
 * term is cut to a signed 32-bit number, the sum has 64 bits. */
UTILITY_API long _hf(const char* text);  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

/** The 64-bit polynomial hash with the factor 31: h = 31h + c for each byte c, read as 0 to 255. */
UTILITY_API unsigned long Strhash(const char* text);

#endif
