#ifndef UTILITY_CODETRANS_DETECTION_H
#define UTILITY_CODETRANS_DETECTION_H

/** @file
 * Telling the encoding of a text. */

#include "../../Utility/UtilityExport.h"

/** The encoding of `length` bytes at `text`: 1 UTF-8, 2 GBK, 3 Big5, 8 Unicode (UCS-2, low byte first), 0 no decision.
 *
 * 0 also before CodeTrans_Initialize. Any bytes may be asked about, NUL too; `text` may be null when `length` is 0.
 * Text that tells nothing, empty or pure ASCII (printable and the usual control characters), is 2 with the library's
 * own data file. A data file may declare further codes.
 *
 * The bytes run through the automaton of the data file. A state that gives a verdict (as after a byte-order mark)
 * ends the matter. Otherwise each state entered adds to a sum for GBK, Big5, UTF-8 and Unicode; the highest sum
 * wins, at a tie the one named first. GBK and Big5 must have been favoured (a positive delta) by more than a quarter
 * as many states as there are bytes from 80 up, UTF-8 by more than a sixth; the result is 0 if the winner was not
 * (GBK needs nothing where there are no such bytes). Unicode needs, of p states in favour and n others with a score,
 * (p + 9) / (n + 1) > 9 in whole numbers, or it is left out. Sums and counts are kept in 64 bits, so that no length
 * overflows them.
 *
 * One pass, no allocation, thread-safe while the tables stay loaded. */
UTILITY_API int CodeTrans_CodeDetect(const char* text, unsigned long length);

#endif
