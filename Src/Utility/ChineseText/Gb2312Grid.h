#ifndef UTILITY_CHINESETEXT_GB2312GRID_H
#define UTILITY_CHINESETEXT_GB2312GRID_H

/** @file
 * Listings of the GB2312 code grid.
 *
 * Each line of a listing is the two bytes of a code (the character itself), its lead byte in decimal and its
 * trail byte in decimal, separated by commas and ended by a line feed; lines ascend by code. A position to
 * which GB2312 assigns no character is listed too. */

#include "../UtilityExport.h"

/** Writes the whole grid, lead and trail bytes A1 to FE, to the file `path`: 8,836 lines.
 *
 * An existing file is replaced. False when the file cannot be opened; errors after that are not reported.
 * `path` must not be null. */
UTILITY_API bool GB2312_Generate(char* path);

/** Writes the rows of Chinese characters, lead bytes B0 to FE, to the file `path`: 7,426 lines; otherwise
 * like GB2312_Generate. */
UTILITY_API bool CC_Generate(const char* path);

#endif
