#ifndef UTILITY_CHINESETEXT_FOREIGNNAMES_H
#define UTILITY_CHINESETEXT_FOREIGNNAMES_H

/** @file
 * Whether a word is written with the characters of foreign names.
 *
 * Words are NUL-terminated GBK and not null. Their characters are counted in three fixed lists, as by
 * GetCharCount: 0, the syllables of transliterated Western names (382 characters); 1, a smaller choice of
 * them with a few others (125); 2, the characters of Japanese names (252). Some are missed, as CC_Find misses
 * them: 丝文夏辛伊雍治赖逊芙迦 of list 0 and 敬未夏植 of list 2. Every call is one pass over the word, at
 * the same cost for every character; nothing is allocated and no state kept, so any number of threads may
 * call. */

#include <cstddef>

#include "../UtilityExport.h"

/** The number of characters of `word` in the list that holds most of them. */
UTILITY_API std::size_t GetForeignCharCount(char* word);

/** Whether `word` looks like a foreign name.
 *
 * Up to two bytes: when its character stands in a list; the empty word and a single ASCII byte are taken for
 * foreign too. Longer words: when more than half of the characters stand in one list, two bytes to a
 * character, so that an ASCII byte weighs half a character. Of names and ordinary words of three characters or
 * more that had no part in the choice of this rule, a hundred of each, it accepts 94 names and 19 words. */
UTILITY_API bool IsForeign(char* word);

/** Whether every character of `word` stands in one and the same list. True for the empty word; an ASCII byte
 * anywhere makes it false. */
UTILITY_API bool IsAllForeign(char* word);

/** The list, 0, 1 or 2, that holds most characters of `word`; of equals the lower, so 0 also where none holds
 * any.
 *
 *     佐藤 gives 2, 史密斯 gives 0, 山田太郎 (two characters in list 0 and in list 2) gives 0 */
UTILITY_API int GetForeignType(const char* word);

#endif
