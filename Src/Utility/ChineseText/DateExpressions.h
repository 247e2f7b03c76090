#ifndef UTILITY_CHINESETEXT_DATEEXPRESSIONS_H
#define UTILITY_CHINESETEXT_DATEEXPRESSIONS_H

/** @file
 * Whether a number is a year or a day of the month.
 *
 * Words, lengths and the comparison with Chinese characters are as in NumberExpressions.h: UTF-8 lists, matched
 * by pairs of bytes, so that GBK numerals are not known. Characters are counted as by GetCharCount. One pass,
 * no allocation, no state: any number of threads may call. */

#include "../UtilityExport.h"

/** Whether `word` is written like a year. `length` counts bytes; 0 means up to the NUL, a negative one gives
 * false.
 *
 * True in each of these cases, halves rounded down: three bytes or more, with half as many units of
 * ’零○〇０一二三四五六七八九壹贰叁肆伍陆柒捌玖; four ASCII bytes, whatever they are; two ASCII bytes of which
 * the first is above `4`; six bytes or more for which IsAllNum holds; four for which it holds and that begin
 * with a unit of ５６７８９; eight bytes with exactly two units of 千仟零〇○; two bytes that are a unit of 千仟.
 *
 *     "1998", "98", "abcd" and "1998.5" are years, "45", "19980" and "" are not */
UTILITY_API bool IsYearTime(const char* word, int length);

/** Whether `word` is written like a day of the month: at most six bytes, with half as many units (rounded
 * down) of 零一二三四五六七八九十, of the forms used on cheques and of full-width digits; or one or two ASCII
 * digits. The value is not looked at, so "99" is a day. True for the empty word and for any single ASCII byte.
 * `length` counts bytes; 0 means up to the NUL. */
UTILITY_API bool IsDayTime(const char* word, unsigned int length);

#endif
