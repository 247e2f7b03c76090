#ifndef UTILITY_TEXTKIT_PIECES_H
#define UTILITY_TEXTKIT_PIECES_H

/** @file
 * Pieces: cutting UTF-8 text, putting it together again, trimming, replacing.
 *
 * What is cut off is a view into the caller's text, which must outlive it. Malformed UTF-8 is content like any other.
 * Linear, without state; safe from any thread. */

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "../UtilityExport.h"
#include "TextRange.h"

namespace textkit {

/** The library's own, for Pieces: what is left to cut, and how. */
struct PieceCursor {
    using Item = std::string_view;
    std::string_view rest, separator;
    std::uint64_t ascii_separators[2] = {};
    bool keep_empty = false, at_end = false;
    bool (*cut)(PieceCursor& cursor) = nullptr; /**< makes the next piece of the rest the item; false without one */
    std::string_view item;

    const char* Place() const { return item.data(); }
    bool Advance() { return cut(*this); }
};

/** The pieces of a text, views into it. */
class Pieces : public TextRange<PieceCursor> {
public:
    /** For Split, SplitAny and Tokens. */
    explicit Pieces(const PieceCursor& before_first) : TextRange(before_first) {}
};

/** Whether the empty pieces between two separators, and in front of the first and behind the last, are pieces. */
enum class Empty {
    kKeep, /**< they are */
    kDrop, /**< they are left out */
};

/** The pieces of `text` between the occurrences of `separator`, which are taken from the left and do not overlap.
 *
 * With kKeep, n occurrences make n + 1 pieces, so that Join with the same separator gives the text again; the empty
 * text is one empty piece. An empty separator does not occur.
 *
 *     textkit::Split("一，二，，三", "，");                           // "一", "二", "", "三"
 *     textkit::Split("a--b----c", "--", textkit::Empty::kDrop);  // "a", "b", "c" */
UTILITY_API Pieces Split(std::string_view text, std::string_view separator, Empty empty = Empty::kKeep);

/** The pieces of `text` between the characters that `separators` holds: whole characters, in one or more bytes.
 *
 *     textkit::SplitAny("红、黄，蓝", "，、");                          // "红", "黄", "蓝"
 *     textkit::SplitAny(" a, b", ", ", textkit::Empty::kDrop);  // "a", "b" */
UTILITY_API Pieces SplitAny(std::string_view text, std::string_view separators, Empty empty = Empty::kKeep);

/** The tokens of `text`: words and numbers, and runs of Chinese characters.
 *
 * A run of Chinese characters is one of kHan, by ClassOf; a word or number one of kLetter, kDigit, kNumber and "_".
 * Inside it, in front of another such character, also stand "." and apostrophes ("example.com", "don't"), and ","
 * between digits ("1,284.50"). Everything else (blanks, punctuation, symbols, control characters, malformed bytes) is
 * between tokens. A run of Chinese characters is not cut further: that takes a Dictionary.
 *
 *     textkit::Tokens("iPhone手机：1,284.50 元。");  // "iPhone", "手机", "1,284.50", "元" */
UTILITY_API Pieces Tokens(std::string_view text);

/** The pieces, each convertible to std::string_view, with `separator` between every two. One allocation; goes over the
 * range twice.
 *
 *     textkit::Join(std::vector<std::string>{"a", "", "b"}, ", ");  // "a, , b" */
template <typename Range>
std::string Join(const Range& pieces, std::string_view separator) {
    std::size_t size = 0, count = 0;
    for (const std::string_view piece : pieces) size += piece.size(), ++count;
    std::string joined;
    if (count == 0) return joined;
    joined.reserve(size + (count - 1) * separator.size());
    for (const std::string_view piece : pieces) {
        if (count-- == 0) break;
        joined += piece;
        if (count > 0) joined += separator;
    }
    return joined;
}
/** The same of pieces in braces. */
inline std::string Join(std::initializer_list<std::string_view> pieces, std::string_view separator) {
    return Join<std::initializer_list<std::string_view>>(pieces, separator);
}

/** `text` without the blanks at its ends: the characters of kSpace, by ClassOf, such as U+3000, U+00A0 and line ends.
 *
 *     textkit::Trim("　 标题\n");  // "标题" */
UTILITY_API std::string_view Trim(std::string_view text);

/** `text` with every occurrence of `old_text` replaced by `new_text`, in one pass from the left: what was put in is not
 * searched again. An empty `old_text` does not occur. `count`, if not null, receives the number of occurrences.
 *
 *     textkit::Replace("aaa", "a", "aa");  // "aaaaaa" */
UTILITY_API std::string Replace(std::string_view text, std::string_view old_text, std::string_view new_text,
                                std::size_t* count = nullptr);

}  // namespace textkit

#endif
