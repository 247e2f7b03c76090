#ifndef UTILITY_CHINESETEXT_NUMBEREXPRESSIONS_H
#define UTILITY_CHINESETEXT_NUMBEREXPRESSIONS_H

/** @file
 * Whether a word is a number.
 *
 * Words are NUL-terminated double-byte (GBK) text and not null. `length` counts bytes and must not lead
 * beyond the NUL; 0 means up to it. A character that starts inside the length is read whole.
 *
 * The Chinese characters that these tests know are compared as the bytes of their UTF-8 form, paired up from
 * the start of each list, with a two-byte unit of the word, as by CC_Find. GBK words therefore match none of
 * them but by accident (三百 is no number), UTF-8 words only where their bytes pair up as in the list (一二 is
 * a Chinese number, 三百 is not). One pass, no allocation, no state: any number of threads may call. */

#include "../UtilityExport.h"

/** Whether `word` is a number in ASCII or GBK full-width digits (A3 B0 to A3 B9).
 *
 * In this order, each part optional: a sign (`+`, `-`, or a unit of ±第—＋), full-width digits, a separator
 * (`.`, `/` or a unit of ∶·．／) and further full-width digits, ASCII digits, a separator and further ASCII
 * digits, a percent sign (`%`, or a unit of ％‰), and units of 百千万亿佰仟兆. A separator needs something
 * in front of it.
 *
 *     "123", "-5", "3.5%", "1/2" are numbers, "abc" and "1.2.3" are not
 *
 * Surprises: the empty word, a lone sign and a lone percent sign are numbers. The byte that ends the digits
 * behind an ASCII separator is accepted whatever it is: "3." and "3.x" are numbers; if it is a percent sign,
 * so is one byte more. A lead byte with only the NUL behind it is a number, alone or behind a sign, digits or a
 * magnitude. */
UTILITY_API bool IsAllNum(const char* word, unsigned long length);

/** Whether `word` is made of Chinese numerals: units of 零○一二两三四五六七八九十廿百千万亿, of the forms used
 * on cheques, of ∶·．／点几上成, the first four bytes of 分之, and at the start a unit of 数第.
 *
 * The word is cut into pairs of bytes from its start, ASCII or not. True for the empty word, false for ASCII
 * digits. */
UTILITY_API bool IsAllChineseNum(char* word, unsigned long length);

#endif
