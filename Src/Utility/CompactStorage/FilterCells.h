#ifndef UTILITY_COMPACTSTORAGE_FILTERCELLS_H
#define UTILITY_COMPACTSTORAGE_FILTERCELLS_H

/** @file
 * Filter data: values of several types in cells of 8 bytes, read from text, written as text and compared.
 *
 * A cell is passed as a pointer to double, which it only is where the type code says so:
 *
 *     code       a cell holds                                   as text
 *     3          a 64-bit integer                               decimal digits
 *     4          a time: 64 bits, seconds since the epoch       as by `str2time`, and by `time2str`
 *     5          a float in its first 4 bytes                   as by "%f" of scanf and printf
 *     7          a double                                       as by "%lf"
 *     any other  a 32-bit integer in its first 4 bytes          decimal digits
 *
 * Cells are in the byte order of the machine. Pointers must not be null. The decimal point is that of the
 * process's locale, times are local and without Chinese characters (see `str2time`, `time2str`); apart
 * from that, any thread may call at any time. */

#include "../UtilityExport.h"

/** Reads `text` into `*cell`, all 8 bytes of it, and returns `cell`. One double quote at the front is
 * skipped; blanks before a number too. What no number can be read from gives 0, and so does an empty
 * text; for a time, what `str2time` makes of it: -1 and a line in the error log, if it is not empty.
 * Integers that 64 bits cannot hold are taken as the nearest that they can, and 32-bit integers are the
 * low half of that. */
UTILITY_API double* str2filter_data(char const* text, double* cell, int type);

/** Writes the cell as text with a NUL to `buffer` and returns `buffer`. That needs 12 bytes for a 32-bit and
 * 21 for a 64-bit integer, 27 for a time, 48 for a float and 318 for a double. The time 0 is the empty text.
 * Numbers with a fraction have six digits behind the point. */
UTILITY_API char* filter_data2str(double* cell, char* buffer, int type);

/** -1, 0 or 1 as cell `a` is less than, equal to or greater than cell `b`; also 1 if either is no number. */
UTILITY_API int filter_data_cmp(double* a, double* b, int type);

/** Compares two values as text: for the type codes 2, 3, 5 and 7 as the cells that `str2filter_data` makes of
 * them, **for every other code, that of time among them, as strcmp does**, byte by byte. Negative, 0 or
 * positive. */
UTILITY_API int filter_data_cmp(char const* a, char const* b, int type);

/** Whether one of the `count` cells at `cells` is equal to `*cell`. The last argument is not used. */
UTILITY_API bool IsExists(double* cell, double* cells, int count, int type, int unused);

#endif
