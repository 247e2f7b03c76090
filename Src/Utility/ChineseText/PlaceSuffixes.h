#ifndef UTILITY_CHINESETEXT_PLACESUFFIXES_H
#define UTILITY_CHINESETEXT_PLACESUFFIXES_H

/** @file
 * Splitting place names into a stem and a suffix. */

#include "../UtilityExport.h"

/** Splits the GBK place name `word` into `stem` and `suffix`; always true.
 *
 * The suffix is one of fifty words (自治区, 高速公路, 半岛 …), else one of 99 characters (县, 海, 村 …), else
 * empty; the stem is what stands before it, and may be empty. Suffixes are compared byte by byte with the end
 * of the name. Of the words, the first in code order wins, so 高速公路 goes before 公路.
 *
 *     新疆维吾尔自治区 gives 新疆维吾尔 and 自治区, 海淀区 gives 海淀 and 区, 北京 gives 北京 and nothing
 *
 * `word` is NUL-terminated and not null. `stem` holds at least strlen(word) + 1 bytes, `suffix` at least 9;
 * both receive a NUL and must overlap neither the name nor each other. One pass to the end of the name;
 * nothing is allocated and no state kept, so any number of threads may call. */
UTILITY_API bool PostfixSplit(const char* word, char* stem, char* suffix);

#endif
