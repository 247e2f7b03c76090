#ifndef UTILITY_STRINGTOOLKIT_SIMILARITY_H
#define UTILITY_STRINGTOOLKIT_SIMILARITY_H

/** @file
 * A score for how much two strings have in common. */

#include "../UtilityExport.h"

/** How similar `b` is to `a`, two NUL-terminated GBK strings of lb and la bytes: 0 for nothing in common, 1
 * for equality.
 *
 * The first of these that applies:
 * - both null or both empty: 1; `a` null or empty: 0.5; `b` null or empty: 0;
 * - equal but for the case of ASCII letters: 1;
 * - `a` occurs in `b`: la / lb;
 * - otherwise s / lb × s / la. Each character of `a`, of n bytes, adds to s: n when it is found in `b` from
 *   where the one found before it starts (at first the start of `b`) and lies n bytes from there; 0.9 n when
 *   it is found from there on elsewhere; 0.6 n when it is only found earlier in `b`; nothing when `b` lacks it.
 *
 * The score is not symmetric, and exceeds 1 where `a` repeats what `b` has once: "aa" against "a" gives 1.62.
 * The first character earns 0.9 n where `b` starts with it. The character search compares bytes and may hit
 * the middle of a character of `b`. Linear in both; allocates where `b` has more than 128 bytes, up to half a
 * megabyte; thread-safe and independent of the locale. */
UTILITY_API double ComputeSim(const char* a, const char* b);

#endif
