#ifndef UTILITY_TEXTKIT_CHINESETEXT_H
#define UTILITY_TEXTKIT_CHINESETEXT_H

/** @file
 * Characters and their classes, sentences, folding: of UTF-8 text in Chinese, English or both.
 *
 * Malformed UTF-8 counts as U+FFFD in the number that Decode would write. Null views are empty texts. Nothing reads or
 * writes process-wide state or a locale; all is safe from any thread and linear in the length of its text. */

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "../UtilityExport.h"
#include "TextRange.h"

namespace textkit {

/** A character and where it stands. */
struct Character {
    char32_t code_point = 0; /**< U+FFFD for a malformed sequence */
    std::string_view bytes; /**< its place in the text; of a malformed sequence, the bytes that one U+FFFD stands for */
};

/** The library's own, for Characters. */
struct CharacterCursor {
    using Item = Character;
    std::string_view rest;
    Character item;

    const char* Place() const { return item.bytes.data(); }
    bool Advance() {
        if (rest.empty()) return false;
        if (static_cast<unsigned char>(rest[0]) >= 0x80) return AdvanceBeyondAscii();
        item = {static_cast<unsigned char>(rest[0]), rest.substr(0, 1)};
        rest.remove_prefix(1);
        return true;
    }
    UTILITY_API bool AdvanceBeyondAscii();
};

/** The characters of a text; their bytes put together are the text.
 *
 *     for (const textkit::Character& c : textkit::Characters("中a"))
 *         out << c.bytes << ' ' << unsigned(c.code_point) << '\n';  // "中 20013", "a 97" */
class Characters : public TextRange<CharacterCursor> {
public:
    /** Those of `text`, which must outlive them. */
    explicit Characters(std::string_view text) : TextRange({text, {}}) {}
};

/** What a character is, by its general category in Unicode 14 and its script. */
enum class CharacterClass : unsigned char {
    kOther,       /**< unassigned, for private use, half a surrogate pair, or beyond U+10FFFF */
    kControl,     /**< control and format characters, such as NUL, U+200B and U+FEFF */
    kSpace,       /**< blanks and line ends, such as U+0009, U+00A0 and U+3000 */
    kHan,         /**< Chinese characters, 々 and 〇; radicals are symbols */
    kLetter,      /**< letters of any other script, kana and Hangul among them, and the marks on them */
    kDigit,       /**< decimal digits of any script */
    kNumber,      /**< other numbers, such as ½, Ⅷ and ㈠ */
    kPunctuation, /**< such as “。《”, and ASCII's but the next */
    kSymbol,      /**< such as ＋￥→, and $+<=>^`|~ of ASCII */
};
/** How many classes there are. */
inline constexpr std::size_t kCharacterClasses = 9;

/** The class of a code point. Full-width forms are of the class of their ASCII characters. Constant time.
 *
 *     textkit::ClassOf(U'中');  // kHan
 *     textkit::ClassOf(U'Ａ');  // kLetter */
UTILITY_API CharacterClass ClassOf(char32_t code_point);

/** How many characters of each class a text holds. */
struct ClassCounts {
    std::array<std::size_t, kCharacterClasses> counts{}; /**< by the number of the class */

    /** How many are of the class `kind`. */
    std::size_t operator[](CharacterClass kind) const { return counts[static_cast<std::size_t>(kind)]; }
    /** How many there are of all classes together. */
    std::size_t total() const {
        std::size_t sum = 0;
        for (const std::size_t count : counts) sum += count;
        return sum;
    }
};

/** Counts the characters of a text by class. A text is all Chinese if its kHan is its total; how the Chinese and Latin
 * parts of a text compare shows in kHan and kLetter; a word count as editors give it for Chinese is the total less
 * kSpace.
 *
 *     const textkit::ClassCounts counts = textkit::CountClasses("GBK 有 21791 个码位。");
 *     counts[textkit::CharacterClass::kHan];    // 4
 *     counts[textkit::CharacterClass::kDigit];  // 5
 *     counts.total();                            // 16 */
UTILITY_API ClassCounts CountClasses(std::string_view text);

/** What a line end (LF, CR, CR LF, FF, U+0085, U+2028, U+2029) is to Sentences. */
enum class LineEnds {
    kEndSentences, /**< every line end ends a sentence: lines are paragraphs, as Chinese is written and PageText gives it */
    kAreBlanks, /**< only an empty line does: lines were broken at some width, as in mail */
};

/** The library's own, for Sentences. */
struct SentenceCursor {
    using Item = std::string_view;
    std::string_view rest;
    LineEnds line_ends;
    std::string_view item;

    const char* Place() const { return item.data(); }
    UTILITY_API bool Advance();
};

/** The sentences of a text: views without blanks at their ends, none empty. Between two of them, in front of the first
 * and behind the last, the text holds blanks and line ends only.
 *
 * A sentence ends behind 。！？, their ASCII forms, …… and the like, in any number, with the closing quotes and brackets
 * that follow; at an empty line, and at line ends as `line_ends` says. ；and ： end none. Nothing ends
 *
 * - in front of ，、；：》 or a dash (“走吧！”，他说), within a title (《怎么办？》), or within a bracket of up to 160 bytes
 *   inside a sentence, unless a 。 stands in it;
 * - at an ASCII mark without a blank or Chinese character behind it (3.14, example.com, a?b=c), or with a small letter
 *   behind that blank; at a "." behind a digit in front of a Chinese character (3.安装);
 * - at the "." of an initial or an abbreviation (J. Smith, U.S., Dr., e.g., No. 5) or of the number that starts a list
 *   item;
 * - at "..." or "…" inside a line of Chinese, and at …… in front of 等.
 *
 * These are rules of form: speech that a sentence goes on behind (“真的吗？”他问。) ends at its closing quote.
 *
 *     textkit::Sentences("他说：“走吧！”然后走了。It costs 3.5 yuan. OK?");
 *     // "他说：“走吧！”", "然后走了。", "It costs 3.5 yuan.", "OK?" */
class Sentences : public TextRange<SentenceCursor> {
public:
    /** Those of `text`, which must outlive them. */
    explicit Sentences(std::string_view text, LineEnds line_ends = LineEnds::kEndSentences)
        : TextRange({text, line_ends, {}}) {}
};

/** What Fold makes equal. */
struct FoldOptions {
    bool width = true;       /**< full-width forms become ASCII, U+3000 a blank, ￠￡￢￥￦￣ their usual forms */
    bool letter_case = true; /**< small letters, in every script that has them (Unicode's simple case folding) */
    /** 、。—～“”‘’〔〕〈〉《》〖〗【】「」『』–―˙ and the small forms ﹐﹑﹒… become ASCII marks. */
    bool punctuation = false;
    /** Every kind of opening bracket becomes "(", of closing bracket ")", “”„‟「」『』 '"', ‘’‛ "'". */
    bool brackets = false;
    /** ，。、／＼｜＿—, their ASCII forms, tabs and U+3000 become blanks; "." and "-", which stand in numbers and names,
     * stay. */
    bool separators = false;
    /** Runs of blanks and line ends become one blank, or nothing between two Chinese characters or marks and at the
     * ends of the text. */
    bool blanks = false;
};

/** `text` in the form in which texts are compared and indexed. Folding what was folded changes nothing. Chinese
 * characters stay as they are, Simplified and Traditional. Malformed UTF-8 becomes U+FFFD, so the result is
 * well-formed. Allocates the result only.
 *
 *     textkit::Fold("ＧＢＫ编码（第２版），ÉTÉ");                    // "gbk编码(第2版),été"
 *     textkit::Fold("【A】、B", {true, true, false, true, true});  // "(a) b" */
UTILITY_API std::string Fold(std::string_view text, const FoldOptions& options = {});

}  // namespace textkit

#endif
