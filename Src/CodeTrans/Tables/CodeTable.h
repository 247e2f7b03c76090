#ifndef UTILITY_CODETRANS_CODETABLE_H
#define UTILITY_CODETRANS_CODETABLE_H

/** @file
 * The Unicode-to-GBK table. */

#include "../../Utility/UtilityExport.h"

/** GBK code of each code point of the Basic Multilingual Plane: the Unicode-to-GBK direction of code page 936.
 *
 * U+0000 to U+007F map to themselves, the 21,791 code points that code page 936 encodes with two bytes to
 * lead byte × 256 + trail byte, U+20AC to 0x0080 (the single byte that the code page gives it), and every other code
 * point to 0. The constants stand in the library's read-only data; any number of threads may read them. */
extern UTILITY_API const unsigned short CodeTable[65536];

#endif
