#ifndef UTILITY_INTERNAL_NUMERALS_H
#define UTILITY_INTERNAL_NUMERALS_H

// What numbers are written with, as text. The first lists are those that the tests of words know; behind them the
// values of all characters that have one.

namespace utility::internal {

inline constexpr char kNumberSignText[] = "±第—＋";
inline constexpr char kNumberSeparatorText[] = "∶·．／";
inline constexpr char kPercentSignText[] = "％‰";
inline constexpr char kMagnitudeText[] = "百千万亿佰仟兆";
inline constexpr char kChineseNumeralText[] =
    "零○一二两三四五六七八九十廿百千万亿壹贰叁肆伍陆柒捌玖拾佰仟兆∶·．／点几上成";
inline constexpr char kNumberLeadingText[] = "数第";
inline constexpr char kFractionWord[] = "分之";

inline constexpr char kYearDigitText[] = "’零○〇０一二三四五六七八九壹贰叁肆伍陆柒捌玖";
inline constexpr char kLateYearDigitText[] = "５６７８９";
inline constexpr char kThousandOrZeroText[] = "千仟零〇○";
inline constexpr char kThousandText[] = "千仟";
inline constexpr char kDayDigitText[] = "零一二三四五六七八九十壹贰叁肆伍陆柒捌玖０１２３４５６７８９";

// Digits and their values; those of 两 and 兩 stand only in front of a unit or alone.
inline constexpr char kHanDigitText[] = "零〇○一二三四五六七八九壹贰叁肆伍陆柒捌玖貳參叄陸两兩";
inline constexpr char kHanDigitValues[] = "000123456789123456789233622";
inline constexpr char kNarrowDigitText[] = "0123456789０１２３４５６７８９";
// Units and the powers of ten that they are; and the tens that are one character, with the number of tens.
inline constexpr char kUnitText[] = "十拾百佰千仟万萬亿億兆";
inline constexpr char kUnitPowers[] = {1, 1, 2, 2, 3, 3, 4, 4, 8, 8, 12};
inline constexpr char kTensText[] = "廿卅卌";
inline constexpr char kPointText[] = "点點";

}  // namespace utility::internal

#endif
