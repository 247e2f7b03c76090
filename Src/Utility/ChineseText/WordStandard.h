#ifndef UTILITY_CHINESETEXT_WORDSTANDARD_H
#define UTILITY_CHINESETEXT_WORDSTANDARD_H

/** @file
 * The canonical form of a word. */

#include "../UtilityExport.h"

/** Rewrites the GBK `word` in place to half-width, lower-case form and returns it.
 *
 * ASCII and full-width letters become lower-case ASCII letters, full-width digits ASCII digits. The other
 * full-width characters from A3 BB on (；＜＝＞？＠ and ［ to ￣) become `;`. Kept as they are: all other
 * two-byte characters (so ，, A3 AC, and ＋, A3 AB), `+-{};`, carriage returns and line feeds, and a blank with an
 * ASCII letter or digit behind it. Everything else is dropped: other blanks, other ASCII, a lead byte at the
 * very end.
 *
 *     "A B .5" becomes "a b5"
 *
 * `word` is NUL-terminated and not null; the form is never longer. One pass, no allocation, no state: any number
 * of threads may call, each with a word of its own. */
UTILITY_API char* WordStandard(char* word);

#endif
