#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "Internal/CodePointIndex.h"
#include "Internal/HanRuns.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/ChineseText.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr char kWideEnds[] = "。！？｡‼⁇⁈⁉";
constexpr char kClosers[] = "”’」』）】》〉〕〗］｝)]}»";
constexpr char kContinuing[] = "，、；：,;:》〉—";
constexpr char kOpeners[] = "《〈（(【[［〔";
constexpr std::string_view kOpenersClosed[] = {"》", "〉", "）", ")", "】", "]", "］", "〕"};
constexpr std::size_t kTitleOpeners = 2;  // of kOpeners, those that may also stand at the start of a sentence
constexpr std::size_t kLongestBracket = 160;

// Words whose full stop ends no sentence, and those of which it ends none in front of a digit.
constexpr std::string_view kTitles = " mr mrs ms dr prof st jr sr gen col capt lt sgt rev hon messrs vs cf viz approx ";
constexpr std::string_view kReferences =
    " no nos fig figs vol p pp ch sec eq art tab jan feb mar apr jun jul aug sep sept oct nov dec ";
constexpr std::size_t kLongestAbbreviation = 6;

constexpr bool IsLineEnd(char32_t c) {
    return c == '\n' || c == '\r' || c == '\f' || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool IsBlank(char32_t c) {
    return c == ' ' || (!IsLineEnd(c) && (ClassOf(c) == CharacterClass::kSpace || c == 0xFEFF));
}

// Characters in front of which an ASCII mark needs no blank: Chinese ones and the punctuation among them.
constexpr bool IsChineseContext(char32_t c) {
    return (c >= 0x2E80 && c < 0xA000) || (c >= 0xF900 && c < 0xFB00) || (c >= 0xFF01 && c < 0xFF61) || c >= 0x20000 ||
           (c >= 0x2018 && c <= 0x201F);
}

// Bytes that no rule is about, so that most of a text is skipped byte by byte. The marks beyond ASCII start with C2, E2,
// E3 and EF; of those with E3 only U+3000 to U+303F matter, of those with EF the full-width forms.
constexpr auto kMayMatter = [] {
    std::array<bool, 256> bytes{};
    for (const char c : std::string_view(".!?\"([\n\r\f\xC2\xE2\xE3\xEF")) bytes[ToByte(c)] = true;
    return bytes;
}();

// Whether EndsHere() has a rule for the character, a bit for each of 64 from kFirst on.
template <char32_t kFirst>
constexpr std::uint64_t kRuled = [] {
    std::uint64_t ruled = 0;
    for (char32_t c = kFirst; c < kFirst + 64; ++c) {
        const bool is_ruled = kIndexOf<kWideEnds>.Contains(c) || kIndexOf<kOpeners>.Contains(c) || c == U'．';
        ruled |= std::uint64_t{is_ruled} << (c - kFirst);
    }
    return ruled;
}();

// The same for any character, as far as those go that Chinese text is full of: there may be one for all the others.
constexpr bool MayBeRuled(char32_t c) {
    if (c / 64 == U'，' / 64) return (kRuled<0xFF00> >> c % 64 & 1) != 0;
    return c / 64 != U'、' / 64 || (kRuled<0x3000> >> c % 64 & 1) != 0;
}

bool StartsWith(std::string_view text, std::size_t pos, std::string_view wanted) {
    return text[pos] == wanted[0] && text.compare(pos, wanted.size(), wanted) == 0;
}

class SentenceScanner {
public:
    SentenceScanner(std::string_view text, LineEnds line_ends) : text_(text), line_ends_(line_ends) {}

    // Where the first sentence ends; the text starts with a character of it.
    std::size_t FindEnd() {
        do SkipToWhatMayMatter();
        while (pos_ < text_.size() && !EndsHere());
        return pos_;
    }

private:
    using Decoded = Utf8Character;  // U+0000 of length 0 at the end of the text

    void SkipToWhatMayMatter() {
        const char *const end = text_.data() + text_.size(), *pos = text_.data() + pos_;
        if (pos != end && !IsAscii(ToByte(*pos))) pos = SkipCommonHan(pos, end);
        while (pos != end && !kMayMatter[ToByte(*pos)]) ++pos;
        pos_ = static_cast<std::size_t>(pos - text_.data());
    }

    Decoded At(std::size_t pos) const {
        if (pos >= text_.size()) return {};
        if (IsAscii(ToByte(text_[pos]))) return {ToByte(text_[pos]), 1};
        return ReadUtf8Character(text_.data() + pos, text_.data() + text_.size());
    }
    template <const auto& kList>
    bool IsAt(std::size_t pos) const {
        return pos < text_.size() && kIndexOf<kList>.Contains(At(pos).code_point);
    }

    // Steps over what stands at pos_; true if the sentence ends there.
    bool EndsHere() {
        const Decoded here = At(pos_);
        if (!MayBeRuled(here.code_point)) {
            pos_ += here.length;
            return false;
        }
        if (IsLineEnd(here.code_point)) return EndsAtLineEnd();
        if (kIndexOf<kWideEnds>.Contains(here.code_point)) return EndsAtMarks(/*ascii=*/false);
        if (const int opener = kIndexOf<kOpeners>.Find(here.code_point); opener >= 0) {
            SkipBracket(here, static_cast<std::size_t>(opener));
            return false;
        }
        switch (here.code_point) {
            case U'…':
                return EndsAtEllipsis("…", 2);
            case U'.':
                return text_.compare(pos_, 2, "..") == 0 ? EndsAtEllipsis(".", 6) : EndsAtFullStop(1);
            case U'．':
                return EndsAtFullStop(here.length);
            case U'!':
            case U'?':
                return EndsAtMarks(/*ascii=*/true);
            case U'"':
                quote_is_open_ = !quote_is_open_;
                [[fallthrough]];
            default:
                pos_ += here.length;
                return false;
        }
    }

    std::size_t SkipBlanks(std::size_t pos) const {
        for (Decoded next; IsBlank((next = At(pos)).code_point);) pos += next.length;
        return pos;
    }

    // A line end ends the sentence in front of it, if it does.
    bool EndsAtLineEnd() {
        if (line_ends_ == LineEnds::kEndSentences) return true;
        std::size_t next = pos_ + (text_.compare(pos_, 2, "\r\n") == 0 ? 2 : At(pos_).length);
        next = SkipBlanks(next);
        if (next == text_.size() || IsLineEnd(At(next).code_point)) return true;
        pos_ = next;
        return false;
    }

    // Steps over a bracket inside a sentence, if it is a short one on one line; else over the opening mark.
    void SkipBracket(const Decoded& opener, std::size_t kind) {
        const bool is_title = kind < kTitleOpeners;
        const std::string_view opening = text_.substr(pos_, opener.length), closing = kOpenersClosed[kind];
        const bool starts_sentence = pos_ == 0;
        pos_ += opener.length;
        // Another opening mark inside one that is not closed is not looked at, so that no text is gone over time and again.
        if ((starts_sentence && !is_title) || pos_ <= given_up_until_[kind]) return;
        const std::string_view content = text_.substr(pos_, kLongestBracket);
        given_up_until_[kind] = pos_ + content.size();
        std::size_t depth = 1;
        for (std::size_t i = 0; i < content.size(); ++i) {
            if (content[i] == '\n' || content[i] == '\r' || (!is_title && StartsWith(content, i, "。"))) {
                given_up_until_[kind] = pos_ + i;
                return;
            }
            if (StartsWith(content, i, opening)) ++depth;
            if (StartsWith(content, i, closing) && --depth == 0) {
                pos_ += i + closing.size();
                given_up_until_[kind] = 0;
                return;
            }
        }
    }

    // Behind closing quotes and brackets at `pos`. A straight quotation mark is one if it closes.
    std::size_t SkipClosers(std::size_t pos) {
        for (;;) {
            const Decoded next = At(pos);
            const bool straight = next.code_point == U'"' || next.code_point == U'\'';
            if (straight) {
                const char32_t behind = At(pos + 1).code_point;
                const bool closes = next.code_point == U'"' ? quote_is_open_
                                                            : behind == 0 || IsBlank(behind) || IsLineEnd(behind) ||
                                                                  IsChineseContext(behind);
                if (!closes) return pos;
                if (next.code_point == U'"') quote_is_open_ = false;
            } else if (next.length == 0 || !kIndexOf<kClosers>.Contains(next.code_point)) {
                return pos;
            }
            pos += next.length;
        }
    }

    // Behind a run of end marks and closers, the first mark of which is at `pos`.
    std::size_t SkipMarks(std::size_t pos) {
        for (;;) {
            std::size_t behind = pos;
            while (IsAt<kWideEnds>(behind) || IsAt<kAsciiAndEllipsis>(behind)) behind += At(behind).length;
            if (behind == pos) return pos;
            pos = SkipClosers(behind);
        }
    }

    bool EndsAtMarks(bool ascii) {
        pos_ = SkipMarks(pos_);
        if (IsAt<kContinuing>(pos_)) return false;
        return !ascii || EndsBehindAscii();
    }

    // Whether what stands behind an ASCII mark and its closers allows for an end.
    bool EndsBehindAscii() const {
        const Decoded next = At(pos_);
        if (next.length == 0 || IsLineEnd(next.code_point) || IsChineseContext(next.code_point)) return true;
        if (!IsBlank(next.code_point)) return false;
        std::size_t word = SkipBlanks(pos_);
        if (line_ends_ == LineEnds::kEndSentences && IsLineEnd(At(word).code_point)) return true;
        while (IsLineEnd(At(word).code_point)) word = SkipBlanks(word + At(word).length);
        const char32_t first = At(word).code_point;
        return !(first >= U'a' && first <= U'z') && !IsAt<kContinuing>(word);
    }

    // A run of `mark`. `full` or more of them are an ellipsis as Chinese has it, fewer as English has it.
    bool EndsAtEllipsis(std::string_view mark, std::size_t full) {
        const bool starts_sentence = pos_ == 0;
        std::size_t count = 0;
        for (; text_.compare(pos_, mark.size(), mark) == 0; ++count) pos_ += mark.size();
        if (starts_sentence || text_.compare(pos_, 3, "等") == 0) return false;
        const std::size_t behind = SkipClosers(pos_);
        const bool closed = behind != pos_;
        pos_ = SkipMarks(behind);
        if (IsAt<kContinuing>(pos_)) return false;
        if (count >= full) return true;
        const bool inside_chinese =
            !closed && pos_ == behind && pos_ < text_.size() && IsChineseContext(At(pos_).code_point);
        return !inside_chinese && EndsBehindAscii();
    }

    bool EndsAtFullStop(std::size_t length) {
        const std::size_t stop = pos_;
        pos_ = SkipMarks(SkipClosers(stop + length));
        if (IsAt<kContinuing>(pos_)) return false;
        if (pos_ != stop + length) return EndsBehindAscii();
        const bool behind_digit = stop > 0 && IsAsciiDigit(ToByte(text_[stop - 1]));
        const Decoded next = At(pos_);
        if (behind_digit && (IsChineseContext(next.code_point) || IsListNumber(stop))) return false;
        if (length > 1 && (next.code_point >= U'０' && next.code_point <= U'９')) return false;
        return EndsBehindAscii() && !IsAbbreviation(stop);
    }

    // Whether nothing but a number like 12 or 3.1.2 stands in front of `stop`.
    bool IsListNumber(std::size_t stop) const {
        constexpr std::size_t kLongestNumber = 8;
        return stop <= kLongestNumber && std::all_of(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(stop),
                                                     [](char c) { return IsAsciiDigit(ToByte(c)) || c == '.'; });
    }

    bool IsAbbreviation(std::size_t stop) const {
        std::size_t start = stop;
        while (start > 0 && stop - start <= kLongestAbbreviation && IsAsciiLetter(ToByte(text_[start - 1]))) --start;
        const std::size_t length = stop - start;
        if (length == 0 || length > kLongestAbbreviation) return false;
        const char before = start > 0 ? text_[start - 1] : ' ';
        const std::size_t next = SkipBlanks(pos_);
        if (next == text_.size() || IsLineEnd(At(next).code_point)) return false;
        if (length == 1)
            return before == '.' || start == 0 ||
                   (IsAsciiUpper(ToByte(text_[start])) && !IsAsciiDigit(ToByte(before)) &&
                    !IsChineseContext(At(next).code_point));
        std::array<char, kLongestAbbreviation + 2> word{' '};
        for (std::size_t i = 0; i < length; ++i) word[i + 1] = ToChar(ToByte(text_[start + i]) | 0x20u);
        word[length + 1] = ' ';
        const std::string_view padded(word.data(), length + 2);
        return kTitles.find(padded) != std::string_view::npos ||
               (kReferences.find(padded) != std::string_view::npos && IsAsciiDigit(ToByte(text_[next])));
    }

    static constexpr char kAsciiAndEllipsis[] = ".!?…";

    std::string_view text_;
    LineEnds line_ends_;
    std::size_t pos_ = 0;
    bool quote_is_open_ = false;  // a straight one
    std::array<std::size_t, std::size(kOpenersClosed)> given_up_until_{};
};

bool IsGap(char32_t c) {
    return IsBlank(c) || IsLineEnd(c);
}

// Without the blanks and line ends at its end.
std::string_view TrimEnd(std::string_view text) {
    for (;;) {
        std::size_t start = text.size();
        while (start > 0 && IsUtf8Continuation(ToByte(text[--start])))
            ;
        if (start == text.size()) return text;
        const Utf8Sequence sequence = ReadUtf8Sequence(text.data() + start, text.size() - start);
        if (!sequence.valid || sequence.length != text.size() - start ||
            !IsGap(Utf8CodePoint(text.data() + start, sequence.length)))
            return text;
        text.remove_suffix(sequence.length);
    }
}

}  // namespace

bool SentenceCursor::Advance() {
    Characters characters(rest);
    auto first = characters.begin();
    while (first != characters.end() && IsGap(first->code_point)) ++first;
    if (first == characters.end()) {
        rest = {};
        return false;
    }
    rest.remove_prefix(static_cast<std::size_t>(first->bytes.data() - rest.data()));
    const std::size_t end = SentenceScanner(rest, line_ends).FindEnd();
    item = TrimEnd(rest.substr(0, end));
    rest.remove_prefix(end);
    return true;
}

}  // namespace textkit
