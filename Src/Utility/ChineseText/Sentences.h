#ifndef UTILITY_CHINESETEXT_SENTENCES_H
#define UTILITY_CHINESETEXT_SENTENCES_H

/** @file
 * Where sentences end and start, and which lines can be titles or sentences.
 *
 * Texts are NUL-terminated and not null; positions, lengths and budgets count bytes. Characters are stepped
 * as by Getchar, two bytes to a character that starts with the top bit set. The sentence ends are the ASCII
 * bytes `.!;?`, carriage return, line feed and tab, and those two-byte units that CC_Find finds in the UTF-8
 * bytes of `。！？；`: E3 80, 82 EF, BC 81, 9F EF and BC 9B. GBK text therefore ends its sentences at ASCII
 * marks alone, and UTF-8 text at a Chinese mark only where its bytes happen to pair up that way. No function
 * allocates or keeps state; any number of threads may call. */

#include <vector>

#include "../UtilityExport.h"

/** The position just behind the first sentence end at or after byte `start`, which is taken for the start of
 * a character; the length of the text when none is met.
 *
 * Scanning stops, as if at the end of the text, once `budget` bytes or more have been stepped over. A `start` beyond
 * the end gives the length of the text, too, if it is no more than 1,024 bytes beyond or greater than any text can
 * be (as -1 is); it must lie nowhere else.
 *
 *     FindSentenceEnd("a.b", 0, 100) == 2          FindSentenceEnd("a.b", 0, 1) == 3
 *
 * A call that finds an end reads what it steps over and up to 1,024 bytes in front of `start`; only one that finds none
 * measures the rest of the text. */
UTILITY_API unsigned long FindSentenceEnd(const char* text, unsigned long start, unsigned long budget);

/** The position just behind the last sentence end in front of byte `position`, 0 when none is met.
 *
 * Steps back from the byte before `position`, two bytes at a time over bytes with the top bit set; what
 * stands at `position` itself and the byte at 0 are never taken for an end. Gives up, with 0, once `budget`
 * bytes or more have been stepped over. `position` must not exceed the length of the text.
 *
 *     FindSentenceStart("x.yz", 4, 100) == 2       FindSentenceStart("xyz", 3, 100) == 0 */
UTILITY_API unsigned long FindSentenceStart(const char* text, unsigned long position, unsigned long budget);

/** Whether the UTF-8 `line` can be a title, judged by its end: not `;`, and in a line of more than three
 * bytes neither `。` nor `！`. False for an empty line. */
UTILITY_API bool IsValidTitle(const char* line);

/** Whether the UTF-8 `line` can be a sentence, judged by its end: a semicolon, full stop, colon or closing
 * parenthesis, or in a line of more than three bytes one of 。：！；）. False for an empty line. */
UTILITY_API bool IsValidSentence(const char* line);

/** Index of the largest score, the first of equals; -1 when there is none. A score that is not a number is
 * never greater than another nor another than it, so one at index 0 keeps its place. */
UTILITY_API int GetMaxIndex(std::vector<float> scores);

#endif
