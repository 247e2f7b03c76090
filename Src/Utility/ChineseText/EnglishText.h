#ifndef UTILITY_CHINESETEXT_ENGLISHTEXT_H
#define UTILITY_CHINESETEXT_ENGLISHTEXT_H

/** @file
 * A quick guess whether a text is English. */

#include "../UtilityExport.h"

/** Whether `text` looks like English, judged by twelve of its bytes.
 *
 * Ten bytes at equal distances are sampled, and at least five of them must be ASCII letters; none of them,
 * nor in a text of more than three bytes the second and the last but one, may have its top bit set, A1 and
 * B1 excepted. The text is NUL-terminated, in an ASCII-compatible encoding; null and empty texts are not
 * English. The text is measured once; nothing is allocated, and any number of threads may call. */
UTILITY_API bool IsEnglishText(const char* text);

#endif
