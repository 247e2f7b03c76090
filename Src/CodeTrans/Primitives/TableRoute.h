#ifndef UTILITY_CODETRANS_TABLEROUTE_H
#define UTILITY_CODETRANS_TABLEROUTE_H

/** @file
 * UTF-8 to GBK by CodeTable, and the step through UCS-2 units (16 bits, low byte first, one code point of the
 * Basic Multilingual Plane each).
 *
 * No locale, no state, no allocation; any number of threads; one pass. Pointers must not be null unless
 * stated. */

#include <cstddef>

#include "../../Utility/UtilityExport.h"

/** Decodes the NUL-terminated `utf8` into UCS-2 units at `ucs2` and returns the number of units.
 *
 * One zero byte (not a whole unit) follows the last unit: `ucs2` needs 2 × units + 1 bytes, at most 2 ×
 * length of `utf8` + 1. The buffers must not overlap. Continuation bytes are checked: a sequence of two or
 * three bytes gives a unit, a sequence of four none, and a byte that starts no such sequence is skipped
 * alone. Overlong forms and surrogates are decoded: C0 80 gives unit 0, ED A0 80 unit D800. */
UTILITY_API std::size_t utf8tou(char* utf8, char* ucs2);

/** Converts `count` UCS-2 units at `ucs2` to GBK bytes at `gbk` and writes two zero bytes behind them.
 *
 * Units below 80 hex give one byte (unit 0 a zero byte), every other unit two: those that GBK lacks A1 A1,
 * the ideographic space, and U+20AC the bytes 00 80, its table value. `gbk` needs at most 2 × `count` + 2
 * bytes. It may be the buffer `ucs2` itself, if that has two bytes behind its units, but must not overlap it
 * otherwise. `ucs2` may be null when `count` is 0. */
UTILITY_API void utoGbk(const char* ucs2, char* gbk, unsigned long count);

/** utf8tou and utoGbk in one pass: the NUL-terminated `utf8` as GBK at `gbk`, two zero bytes behind it.
 *
 * `gbk` needs at most the length of `utf8` + 2 bytes. It may be the buffer `utf8` itself, if that has this
 * size, but must not overlap it otherwise. A zero byte inside the result comes from C0 80 or from U+20AC, as
 * above. */
UTILITY_API void utf8toGbk(char* utf8, char* gbk);

#endif
