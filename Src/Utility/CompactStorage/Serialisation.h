#ifndef UTILITY_COMPACTSTORAGE_SERIALISATION_H
#define UTILITY_COMPACTSTORAGE_SERIALISATION_H

/** @file
 * Small encodings for binary files: a variable-length code for integers, strings behind their length, a
 * growing buffer of integers. The bytes are the same on every machine. No global state, so any thread may
 * call at any time. */

#include <cstddef>
#include <cstdio>
#include <string>

#include "../UtilityExport.h"

/** Writes `value` to `code` in the shortest of four forms and returns how many bytes that took, 1 to 4;
 * `code` needs 4.
 *
 * The top two bits of the first byte are the number of bytes that follow it; the value has the other
 * bits, high byte first: 63 is 3F, 64 is 40 40, 2^30 - 1 is FF FF FF FF. Negative values and those from
 * 2^30 have no code: result 0, nothing is written. */
UTILITY_API int int_compress(int value, unsigned char* code);

/** Reads the code at `code` into `*value` and returns how many bytes it has, 1 to 4, which the first one
 * tells. Every sequence of bytes is a code, if not always the shortest of its value. */
UTILITY_API int int_uncompress(unsigned char* code, int* value);

/** Writes the length of `text` in bytes (4 bytes, low byte first, no NUL) and then `text` to a stream open
 * for binary writing; returns the number of bytes of `text` written. A text of 4 GiB or more is cut to
 * its length modulo 2^32. */
UTILITY_API std::size_t tstring_save(const std::string& text, std::FILE* stream);

/** Reads what `tstring_save` wrote into `text`, **which ends at the first NUL**, though the stream moves past
 * all of it.
 *
 * If the stream ends early, `text` is what there was; if the length itself is cut short, `text` is empty.
 * Memory is allocated as bytes arrive, so a damaged length does no harm. */
UTILITY_API void tstring_load(std::string& text, std::FILE* stream);

/** Appends the 4 bytes of `value` to the block `*buffer`, of which `used` of `capacity` bytes are in use;
 * adds 4 to `used` and returns it. Low byte first, or high byte first if `swap`.
 *
 *     char* buffer = nullptr;
 *     int used = 0, capacity = 0;
 *     WriteBuf(&buffer, used, capacity, 0x01020304, true);   // 4; 01 02 03 04
 *     free(buffer);
 *
 * Where fewer than 10 bytes are free, `capacity` becomes `used` + 1,024 and the block, of the malloc
 * family or null, is reallocated. If that fails, or `capacity` would not fit an int, nothing changes: the
 * result is the old `used`. */
UTILITY_API int WriteBuf(char** buffer, int& used, int& capacity, int value, bool swap);

#endif
