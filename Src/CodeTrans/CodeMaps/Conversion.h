#ifndef UTILITY_CODETRANS_CONVERSION_H
#define UTILITY_CODETRANS_CONVERSION_H

/** @file
 * Conversion of text in a known or a detected encoding to Unicode, UTF-8 or GBK.
 *
 * `encoding` is a code of EncodingCodes.h. 0 asks CodeTrans_CodeDetect about the first `length` bytes and goes on with
 * its answer; `length` and the sizes below then mean what they mean for that answer, so a caller who passes 0 provides
 * the most that any answer needs, as each function says. Other codes, and 0 when the tables are not loaded or nothing
 * is decided, give an empty output: `output_length` 0, result 0, nothing written. (GBKBig5_ToUnicode takes its code as
 * it is and asks nobody.)
 *
 * `input` may be null, which is an empty text; `output` may not. The buffers may be the same where bytes are only
 * copied; otherwise they must not overlap. Should memory run out, std::bad_alloc is thrown; GBKBig5_ToUnicode needs
 * none. */

#include <cstddef>

#include "../../Utility/UtilityExport.h"

/** Conversion errors of the last GBKBig5_ToUnicode call: 1 if its text ended with a lead byte, otherwise 0.
 *
 * A plain global that every such call writes (CodeTrans_ToUnicode makes them, too), in atomic steps: the calls of
 * several threads do not race, but whose count it holds then nobody knows, and a host must not read it meanwhile. */
extern UTILITY_API std::size_t CodeTrans_iTransErrCnt;

/** Decodes `length` bytes of GBK (`encoding` 2) or Big5 (3) by the loaded map into UCS-2 units, low byte first.
 *
 * Returns the bytes written, also in `output_length`, which holds the capacity of `output` in bytes on entry. Output
 * ends with the last whole unit that fits; a capacity below 2 takes none. 2 × `length` bytes always suffice. There is
 * no terminator.
 *
 * A byte below 80 becomes the unit of that value. A higher one takes the next byte with it, whatever that is (a line
 * feed, too), and gives the map's entry, 0 for a pair that is no character and for any other `encoding`. The last byte
 * of the text, if it is a lead byte, gives FF FE (U+FEFF), and CodeTrans_iTransErrCnt becomes 1. A single byte 80 is
 * such a lead byte, never the euro sign. Without tables: 0, nothing written.
 *
 *     D6 D0 41 gives 2D 4E 41 00 */
UTILITY_API unsigned long GBKBig5_ToUnicode(int encoding, const char* input, unsigned long length, char* output,
                                            unsigned long& output_length);

/** Converts text to Unicode; the shape depends on `encoding`. Returns the bytes written.
 *
 * 1: `input` is NUL-terminated UTF-8 and becomes 32-bit wide characters in the machine's order (the lenient decoding of
 *    utf8_to_unicode), two zero bytes behind them, which are not counted. `length` and the capacity are not looked at,
 *    `output_length` stays as it was. `output` needs 4 bytes for each byte of input and 2; no alignment.
 * 2, 3: as GBKBig5_ToUnicode.
 * 8: the bytes are copied, no more than the capacity (`output_length` on entry) if that is not 0, and a zero byte
 *    written behind them: `output` needs one byte more than are copied. The count goes to `output_length`, too.
 * 0: `length` bytes readable and a NUL behind them; 4 × `length` + 2 bytes writable. */
UTILITY_API unsigned long CodeTrans_ToUnicode(int encoding, const char* input, unsigned long length, char* output,
                                              unsigned long& output_length);

/** Converts text to UTF-8. Returns the bytes written without the terminator, also in `output_length`, which holds the
 * capacity on entry, 0 for no limit.
 *
 * 1: `length` bytes are copied, no more than the capacity.
 * 2, 3: `input` is NUL-terminated GBK (3, too: Big5 is read as GBK; decode it with CodeTrans_ToUnicode instead),
 *    converted by ANSIToUTF8 under its locale; no more than the capacity is copied, which may cut a character. `length`
 *    is not looked at.
 * 1, 2, 3: a zero byte follows: `output` needs capacity + 1 bytes; without a limit `length` + 1 (1) or 3 × the bytes
 *    of input + 1 (2, 3; the single byte 80 is the euro sign, three bytes).
 * 8: `input` is a wide string in the machine's order, at any address, and both `length` and the capacity count its
 *    32-bit characters, not bytes. All of its UTF-8 is written, a zero byte behind it: 3 × characters + 1 bytes.
 *    Characters above U+FFFF are dropped.
 * 0: the answer may be 8: 4 × `length` bytes readable, the bytes up to `length` followed by a NUL for 2 and 3; 3 ×
 *    `length` + 1 bytes writable. Since UCS-2 is what is detected and a wide string is read, detection is of use here
 *    for the other encodings only. */
UTILITY_API unsigned long CodeTrans_ToUtf8(int encoding, const char* input, unsigned long length, char* output,
                                           unsigned long& output_length);

/** Converts text to GBK. The result goes to `output_length`, too; its value on entry is not looked at.
 *
 * 1: `input` is NUL-terminated UTF-8, converted by UTF8ToANSI under its locale up to the first character that GBK
 *    lacks; `length` is not looked at. Returns the bytes written without the terminator; `output` needs the bytes of
 *    the input and 1.
 * 2, 3: `length` bytes are copied and a zero byte written behind them; Big5 stays Big5. Returns `length`.
 * 8: `length` counts UCS-2 units, low byte first; utoGbk converts them, A1 A1 for what GBK lacks, and writes two zero
 *    bytes behind them: `output` needs 2 × `length` + 2 bytes. Returns `length`, the number of units, not of bytes.
 * 0: the answer may be 8: 2 × `length` bytes readable, the bytes up to `length` followed by a NUL for 1; 2 × `length`
 *    + 2 bytes writable. */
UTILITY_API unsigned long CodeTrans_ToAnsi(int encoding, const char* input, unsigned long length, char* output,
                                           unsigned long& output_length);

#endif
