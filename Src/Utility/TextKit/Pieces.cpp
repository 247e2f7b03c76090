#include "Utility/TextKit/Pieces.h"

#include <algorithm>
#include <array>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/HanRuns.h"
#include "Internal/SubstringSearch.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/ChineseText.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::size_t kNowhere = std::string_view::npos;

// The first character of a text that is not empty.
Character FirstCharacter(std::string_view text) {
    if (IsAscii(ToByte(text[0]))) return {ToByte(text[0]), text.substr(0, 1)};
    CharacterCursor cursor{text, {}};
    cursor.Advance();
    return cursor.item;
}

// Cuts the rest at the separator of `length` bytes at `pos`, which is none at the end of the text.
bool CutAt(PieceCursor& cursor, std::size_t pos, std::size_t length) {
    cursor.item = cursor.rest.substr(0, pos);
    cursor.at_end = pos >= cursor.rest.size();
    cursor.rest.remove_prefix(cursor.at_end ? cursor.rest.size() : pos + length);
    return cursor.keep_empty || !cursor.item.empty();
}

bool CutAtString(PieceCursor& cursor) {
    while (!cursor.at_end) {
        const std::size_t pos = cursor.separator.empty() ? kNowhere : FindFirst(cursor.rest, cursor.separator, 0);
        if (CutAt(cursor, pos, cursor.separator.size())) return true;
    }
    return false;
}

bool CutAtAny(PieceCursor& cursor) {
    while (!cursor.at_end) {
        const std::string_view text = cursor.rest;
        std::size_t pos = 0, length = 1;
        for (; pos < text.size(); pos += length) {
            const unsigned char byte = ToByte(text[pos]);
            length = 1;
            if (IsAscii(byte)) {
                if ((cursor.ascii_separators[byte >> 6] >> (byte & 63) & 1) != 0) break;
                continue;
            }
            const Utf8Sequence sequence = ReadUtf8Sequence(text.data() + pos, text.size() - pos);
            length = sequence.length;
            if (sequence.valid && cursor.separator.find(text.substr(pos, length)) != kNowhere) break;
        }
        if (CutAt(cursor, pos, length)) return true;
    }
    return false;
}

// Of what a token is made.
enum class Part { kNone, kWord, kHan };

constexpr auto kAsciiParts = [] {
    std::array<Part, 0x80> parts{};
    for (unsigned char c = 0; c < parts.size(); ++c)
        if (IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_') parts[c] = Part::kWord;
    return parts;
}();
static_assert(Part{} == Part::kNone);

Part PartOf(char32_t code_point) {
    if (code_point < kAsciiParts.size()) return kAsciiParts[code_point];
    switch (ClassOf(code_point)) {
        case CharacterClass::kHan:
            return Part::kHan;
        case CharacterClass::kLetter:
        case CharacterClass::kDigit:
        case CharacterClass::kNumber:
            return Part::kWord;
        default:
            return Part::kNone;
    }
}

bool IsDigit(char32_t code_point) {
    return ClassOf(code_point) == CharacterClass::kDigit;
}

// Whether `mark`, at the start of `text`, belongs to the word around it, whose last character so far is `before`.
bool IsInnerPunctuation(const Character& mark, std::string_view text, char32_t before) {
    constexpr char32_t kApostrophe = 0x2019;
    const bool joins_words = mark.code_point == '.' || mark.code_point == '\'' || mark.code_point == kApostrophe;
    if ((!joins_words && mark.code_point != ',') || mark.bytes.size() == text.size()) return false;
    const char32_t next = FirstCharacter(text.substr(mark.bytes.size())).code_point;
    return joins_words ? PartOf(next) == Part::kWord : IsDigit(before) && IsDigit(next);
}

// How many bytes at the start of a text are ASCII characters of one part.
std::size_t CountAsciiOf(Part part, std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && IsAscii(ToByte(text[count])) && kAsciiParts[ToByte(text[count])] == part) ++count;
    return count;
}

struct TokenBytes {
    std::size_t length, behind;  // of the token and of what is known to be none behind it
};

// The token at the start of `rest`, which starts with `last`, a character of the part.
TokenBytes MeasureToken(std::string_view rest, Part part, Character last) {
    constexpr ByteSet kInnerMarks{".,'"};
    for (std::size_t end = last.bytes.size();;) {
        // First what most tokens are made of, then any character.
        const std::string_view run = rest.substr(end);
        if (part == Part::kHan) {
            end += static_cast<std::size_t>(SkipCommonHan(run.data(), run.data() + run.size()) - run.data());
        } else if (const std::size_t count = CountAsciiOf(Part::kWord, run); count > 0) {
            end += count;
            last.code_point = ToByte(rest[end - 1]);
        }
        if (end == rest.size()) return {end, 0};
        if (IsAscii(ToByte(rest[end])) && (part == Part::kHan || !kInnerMarks.Contains(rest[end]))) return {end, 0};
        const std::string_view text = rest.substr(end);
        const Character next = FirstCharacter(text);
        const Part next_part = PartOf(next.code_point);
        const bool inside = part == Part::kWord && next_part == Part::kNone;
        if (next_part != part && !(inside && IsInnerPunctuation(next, text, last.code_point)))
            return {end, next_part == Part::kNone ? next.bytes.size() : 0};
        last = next;
        end += next.bytes.size();
    }
}

bool CutToken(PieceCursor& cursor) {
    std::string_view& rest = cursor.rest;
    Part part = Part::kNone;
    Character first;
    for (; part == Part::kNone; rest.remove_prefix(part == Part::kNone ? first.bytes.size() : 0)) {
        rest.remove_prefix(CountAsciiOf(Part::kNone, rest));
        if (rest.empty()) return false;
        first = FirstCharacter(rest);
        part = PartOf(first.code_point);
    }
    const TokenBytes bytes = MeasureToken(rest, part, first);
    cursor.item = rest.substr(0, bytes.length);
    rest.remove_prefix(bytes.length + bytes.behind);
    return true;
}

constexpr ByteSet kAsciiBlanks{"\t\n\v\f\r "};

// Length of the blank at the start or end of a text, 0 without one.
std::size_t BlankAtStart(std::string_view text) {
    if (text.empty()) return 0;
    if (IsAscii(ToByte(text[0]))) return kAsciiBlanks.Contains(text[0]);
    const Character first = FirstCharacter(text);
    return ClassOf(first.code_point) == CharacterClass::kSpace ? first.bytes.size() : 0;
}

std::size_t BlankAtEnd(std::string_view text) {
    constexpr std::size_t kLongestBlank = 3;
    for (std::size_t length = 1; length <= std::min(kLongestBlank, text.size()); ++length) {
        const std::string_view end = text.substr(text.size() - length);
        if (!IsUtf8Continuation(ToByte(end[0]))) return BlankAtStart(end) == length ? length : 0;
    }
    return 0;
}

}  // namespace

Pieces Split(std::string_view text, std::string_view separator, Empty empty) {
    return Pieces({text, separator, {}, empty == Empty::kKeep, false, CutAtString, {}});
}

Pieces SplitAny(std::string_view text, std::string_view separators, Empty empty) {
    PieceCursor cursor{text, separators, {}, empty == Empty::kKeep, false, CutAtAny, {}};
    for (const char c : separators)
        if (IsAscii(ToByte(c))) cursor.ascii_separators[ToByte(c) >> 6] |= std::uint64_t{1} << (ToByte(c) & 63);
    return Pieces(cursor);
}

Pieces Tokens(std::string_view text) {
    return Pieces({text, {}, {}, false, false, CutToken, {}});
}

std::string_view Trim(std::string_view text) {
    for (std::size_t length; (length = BlankAtStart(text)) > 0;) text.remove_prefix(length);
    for (std::size_t length; (length = BlankAtEnd(text)) > 0;) text.remove_suffix(length);
    return text;
}

std::string Replace(std::string_view text, std::string_view old_text, std::string_view new_text, std::size_t* count) {
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t found = 0, rest = 0;
    for (std::size_t pos; !old_text.empty() && (pos = FindFirst(text, old_text, rest)) != kNowhere; ++found) {
        replaced.append(text, rest, pos - rest).append(new_text);
        rest = pos + old_text.size();
    }
    replaced.append(text, rest);
    if (count != nullptr) *count = found;
    return replaced;
}

}  // namespace textkit
