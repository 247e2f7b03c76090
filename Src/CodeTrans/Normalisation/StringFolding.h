#ifndef UTILITY_CODETRANS_STRINGFOLDING_H
#define UTILITY_CODETRANS_STRINGFOLDING_H

/** @file
 * Folding of GBK text into a half-width, lower-case form for comparing and indexing. */

#include "../../Utility/UtilityExport.h"

/** Folds `length` bytes of GBK text in place and returns the new length in bytes, which is never greater.
 *
 * Full-width digits and Latin letters become ASCII, upper case becomes lower case. （ and 【 become "(", ） and
 * 】 become ")", each of “ ” ‘ ＇ a double quotation mark (’ stays), and each of ＼ ｜ ， ． 。 、 － —, the
 * ideographic space and the user-defined code AA A4 a tab. Unless `keep_separators` is true, the bytes of
 * ",/_" and zero bytes within the length become tabs as well. Everything else stays, an orphan lead byte at
 * the end too.
 *
 * A byte from 80 up forms a pair with whatever byte follows it, a zero byte too (such a pair stays as it is); when
 * g_nLangType is 0 there are no pairs and only single bytes are folded. A NUL is written behind the result, so
 * `text` needs `length` + 1 bytes, unless `length` is 0: then nothing is touched, and `text` may be null. One pass,
 * no allocation; reads g_nLangType once and is thread-safe as long as nobody writes it.
 *
 *     "ABC,def" gives "abc\tdef", or "abc,def" with keep_separators; （Ｔｅｓｔ１２３） gives "(test123)". */
UTILITY_API unsigned long str_normalization(char* text, unsigned long length, bool keep_separators);

/** str_normalization under the name that is used for file names in archives. */
UTILITY_API unsigned long zipname_normalization(char* text, unsigned long length, bool keep_separators);

#endif
