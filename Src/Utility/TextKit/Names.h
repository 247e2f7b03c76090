#ifndef UTILITY_TEXTKIT_NAMES_H
#define UTILITY_TEXTKIT_NAMES_H

/** @file
 * Names in Chinese: whether a word looks like a foreign one, what kind of place another is. The lists behind both are
 * of Simplified Chinese. Functions of UTF-8 words, linear, without state; they allocate nothing and are safe from any
 * thread. */

#include <string_view>

#include "../UtilityExport.h"

namespace textkit {

/** Whose names are written with certain characters. */
enum class NameStyle {
    kWestern,  /**< transliterated names of Europe and America */
    kSlavonic, /**< those of them with the characters of Slavonic names, such as 娃, 契 and 夫 */
    kJapanese, /**< names of Japan */
};

/** How well a word fits as a foreign name. */
struct ForeignName {
    NameStyle style = NameStyle::kWestern; /**< the style that most of its characters are used in */
    /** How many of its characters that are, from 0 to 1. Most names have 1, and few ordinary words. About nine names in
     * ten have more than a half, and one in six of the ordinary words with three characters or more. */
    double share = 0;
};

/** Compares `word` with the characters that foreign names are written with. The dots and blanks between the parts of a
 * name (·・•‧) do not count. Where two styles have the same share, the earlier one stands, but a share below 1 goes to
 * kJapanese, since a transliterated name hardly holds other characters. The empty word has share 0.
 *
 *     textkit::MatchForeignName("比尔·盖茨");  // kWestern, 1
 *     textkit::MatchForeignName("山田太郎");   // kJapanese, 0.5
 *     textkit::MatchForeignName("电脑");       // share 0 */
UTILITY_API ForeignName MatchForeignName(std::string_view word);

/** A place name in two parts, views into it. */
struct PlaceName {
    std::string_view stem;   /**< what stands in front of the suffix */
    std::string_view suffix; /**< empty if it has none */
};

/** Cuts the suffix off a place name: the longest that fits, of 50 words such as 自治区, 高速公路 and 机场, else of 99
 * characters such as 市, 县 and 河. The stem is never empty: a name that is a suffix has none.
 *
 *     textkit::SplitPlaceName("北京市");        // "北京", "市"
 *     textkit::SplitPlaceName("新疆维吾尔自治区");  // "新疆维吾尔", "自治区"
 *     textkit::SplitPlaceName("广场");          // "广场", "" */
UTILITY_API PlaceName SplitPlaceName(std::string_view name);

}  // namespace textkit

#endif
