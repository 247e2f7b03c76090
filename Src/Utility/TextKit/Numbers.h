#ifndef UTILITY_TEXTKIT_NUMBERS_H
#define UTILITY_TEXTKIT_NUMBERS_H

/** @file
 * Numbers: Arabic and Chinese numerals with their exact values. Functions of UTF-8 text, linear, without state; safe
 * from any thread. */

#include <cstdint>
#include <optional>
#include <string_view>

#include "../UtilityExport.h"
#include "TextRange.h"

namespace textkit {

/** A rational number in lowest terms. */
struct Number {
    std::int64_t numerator = 0;   /**< with the sign */
    std::int64_t denominator = 1; /**< positive; 1 for integers */

    /** Whether the number is whole. */
    bool IsInteger() const { return denominator == 1; }
    /** The number, rounded where 53 bits do not hold it. */
    double ToDouble() const { return static_cast<double>(numerator) / static_cast<double>(denominator); }
    /** Whether both are the same number. */
    friend bool operator==(const Number& a, const Number& b) {
        return a.numerator == b.numerator && a.denominator == b.denominator;
    }
    /** Whether they are not. */
    friend bool operator!=(const Number& a, const Number& b) { return !(a == b); }
};

/** The value of `text`, which is a number and nothing else (no blanks either).
 *
 * - Digits: ASCII, full-width, 〇一二 … and the forms of cheques, Simplified and Traditional, in any mixture (二0二六);
 *   thousands separated by commas (1,284.5).
 * - Chinese numerals with 十百千万亿兆 (10^12) and 廿卅卌, as strictly as they are written: 一万二千亿, 三万亿, 两千零五. A last
 *   digit without 零 counts the next lower unit: 一百五 is 150, 两万五 is 25000. 百, 万 and the like alone are 1 of them.
 * - Both together: 3万5千, 1.5亿, 12万3456.
 * - 点 and "." (三点一四), %, ‰, 百分之五, 三分之一, 三又二分之一, 1/2, 半, 一半; in front + - or 负.
 *
 * No value: what is written for "about" (二三十, 十几, 数百), digits in the wrong order (三百二千), numerator or denominator
 * above 2^63 - 1, denominator 0.
 *
 *     textkit::ParseNumber("三百二十")->numerator;      // 320
 *     textkit::ParseNumber("百分之五")->ToDouble();     // 0.05: 1 / 20
 *     textkit::ParseNumber("负1.5亿")->numerator;       // -150000000
 *     textkit::ParseNumber("二三十").has_value();       // false */
UTILITY_API std::optional<Number> ParseNumber(std::string_view text);

/** A number in a text. */
struct NumberMatch {
    std::string_view text; /**< where it stands */
    Number value;          /**< what it is */
};

/** The library's own, for Numbers. */
struct NumberCursor {
    using Item = NumberMatch;
    std::string_view text;
    std::size_t pos = 0;
    NumberMatch item;

    const char* Place() const { return item.text.data(); }
    UTILITY_API bool Advance();
};

/** The numbers in a text. What looks like a number is taken as a whole, and left out if ParseNumber has no value for
 * it: of 二三十 and 1.2.3 nothing is found. So are 半 and 百, 万 and the like alone, digits within Latin words (GBK2), and
 * "/", which stands between two numbers. "-" is a sign where no word, digit or bracket ends in front of it.
 *
 * Words are not known: of 一起 the 一 is found. 2026年11月23日 holds three numbers.
 *
 *     for (const textkit::NumberMatch& n : textkit::Numbers("第十二章：增长5%，约三万五千人"))
 *         out << n.text << '=' << n.value.ToDouble() << ' ';  // 十二=12 5%=0.05 三万五千=35000 */
class Numbers : public TextRange<NumberCursor> {
public:
    /** Those of `text`, which must outlive them. */
    explicit Numbers(std::string_view text) : TextRange({text, 0, {}}) {}
};

}  // namespace textkit

#endif
