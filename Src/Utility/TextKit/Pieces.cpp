#include "Utility/TextKit/Pieces.h"

#include <algorithm>
#include <array>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/HanRuns.h"
#include "Internal/SubstringSearch.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/ChineseText.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::size_t kNowhere = std::string_view::npos;

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
enum class Part : unsigned char { kNone, kWord, kHan };

constexpr auto kAsciiParts = [] {
    std::array<Part, 0x80> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto c = static_cast<unsigned char>(i);
        if (IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_') parts[i] = Part::kWord;
    }
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

bool IsAsciiOf(Part part, char c) {
    return IsAscii(ToByte(c)) && kAsciiParts[ToByte(c)] == part;
}

// Whether `mark`, at `pos`, belongs to the word around it, whose last character so far is `before`.
bool IsInnerPunctuation(const Utf8Character& mark, const char* pos, const char* end, char32_t before) {
    constexpr char32_t kApostrophe = 0x2019;
    const bool joins_words = mark.code_point == '.' || mark.code_point == '\'' || mark.code_point == kApostrophe;
    const char* const behind = pos + mark.length;
    if ((!joins_words && mark.code_point != ',') || behind == end) return false;
    const char32_t next = ReadUtf8Character(behind, end).code_point;
    return joins_words ? PartOf(next) == Part::kWord : IsDigit(before) && IsDigit(next);
}

// The end of the ASCII letters, digits and "_" at the start of a text.
const char* SkipAsciiWord(const char* pos, const char* end) {
#ifdef __SSE2__
    while (end - pos >= 16) {
        const auto all = [](char byte) { return _mm_set1_epi8(byte); };
        // As signed bytes, those beyond ASCII are below all others.
        const auto between = [&](__m128i bytes, char first, char last) {
            return _mm_and_si128(_mm_cmpgt_epi8(bytes, all(static_cast<char>(first - 1))),
                                 _mm_cmplt_epi8(bytes, all(static_cast<char>(last + 1))));
        };
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pos));
        const __m128i letters = between(_mm_or_si128(bytes, all('a' - 'A')), 'a', 'z');
        const __m128i others = _mm_or_si128(between(bytes, '0', '9'), _mm_cmpeq_epi8(bytes, all('_')));
        const auto outside = ~static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(letters, others))) & 0xFFFFu;
        if (outside != 0) return pos + __builtin_ctz(outside);
        pos += 16;
    }
#endif
    while (pos != end && IsAsciiOf(Part::kWord, *pos)) ++pos;
    return pos;
}

struct TokenEnd {
    const char *token, *behind;  // the latter is the end of what is known to be none behind it
};

TokenEnd FindHanEnd(const char* pos, const char* end) {
    for (;;) {
        pos = SkipCommonHan(pos, end);
        if (pos == end || IsAscii(ToByte(*pos))) return {pos, pos};
        const Utf8Character next = ReadUtf8Character(pos, end);
        const Part part = PartOf(next.code_point);
        if (part != Part::kHan) return {pos, part == Part::kNone ? pos + next.length : pos};
        pos += next.length;
    }
}

// Where the word at `pos`, which starts with `last`, ends.
TokenEnd FindWordEnd(const char* pos, const char* end, Utf8Character last) {
    constexpr ByteSet kInnerMarks{".,'"};
    for (pos += last.length;; pos += last.length) {
        // First what most words are made of, then any character.
        if (const char* const run_end = SkipAsciiWord(pos, end); run_end != pos) {
            pos = run_end;
            last.code_point = ToByte(pos[-1]);
        }
        if (pos == end || (IsAscii(ToByte(*pos)) && !kInnerMarks.Contains(*pos))) return {pos, pos};
        const Utf8Character next = ReadUtf8Character(pos, end);
        const Part part = PartOf(next.code_point);
        if (part == Part::kHan) return {pos, pos};
        if (part == Part::kNone && !IsInnerPunctuation(next, pos, end, last.code_point))
            return {pos, pos + next.length};
        last = next;
    }
}

bool CutToken(PieceCursor& cursor) {
    const char *pos = cursor.rest.data(), *const end = pos + cursor.rest.size();
    TokenEnd found{};
    for (;;) {
        while (pos != end && IsAsciiOf(Part::kNone, *pos)) ++pos;
        if (pos == end) return false;
        if (end - pos >= kHanBytes && IsCommonHan(pos)) {
            found = FindHanEnd(pos, end);
            break;
        }
        const Utf8Character first = ReadUtf8Character(pos, end);
        const Part part = PartOf(first.code_point);
        if (part != Part::kNone) {
            found = part == Part::kHan ? FindHanEnd(pos + first.length, end) : FindWordEnd(pos, end, first);
            break;
        }
        pos += first.length;
    }
    cursor.item = {pos, static_cast<std::size_t>(found.token - pos)};
    cursor.rest = {found.behind, static_cast<std::size_t>(end - found.behind)};
    return true;
}

constexpr ByteSet kAsciiBlanks{"\t\n\v\f\r "};

// Length of the blank at the start or end of a text, 0 without one.
std::size_t BlankAtStart(std::string_view text) {
    if (text.empty()) return 0;
    if (IsAscii(ToByte(text[0]))) return kAsciiBlanks.Contains(text[0]);
    const Utf8Character first = ReadUtf8Character(text.data(), text.data() + text.size());
    return ClassOf(first.code_point) == CharacterClass::kSpace ? first.length : 0;
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
