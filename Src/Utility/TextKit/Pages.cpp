#include "Utility/TextKit/Pages.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "Internal/AsciiCase.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/HtmlElements.h"
#include "Utility/TextKit/References.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kBlanksAndSlash = "/ \t\n\r\f";

enum class ByteClass : std::uint8_t { kPlain, kBlank, kHigh, kMarkup, kReference, kNul };

constexpr auto kByteClasses = [] {
    std::array<ByteClass, 256> classes{};
    for (std::size_t byte = 0x80; byte < 256; ++byte) classes[byte] = ByteClass::kHigh;
    for (const char c : {' ', '\t', '\n', '\r', '\f'}) classes[ToByte(c)] = ByteClass::kBlank;
    classes['<'] = ByteClass::kMarkup;
    classes['&'] = ByteClass::kReference;
    classes[0] = ByteClass::kNul;
    return classes;
}();

ByteClass ClassOf(char c) {
    return kByteClasses[ToByte(c)];
}

// A search that remembers what it found, or that nothing is left to find, so that a page full of openings without a closing
// costs one pass and not one each.
class Finder {
public:
    Finder(std::string_view text, std::string_view wanted) : text_(text), wanted_(wanted) {}
    // First occurrence at `from` or later, kNone without one; letters of `wanted` (lower case) match in any case.
    std::size_t Find(std::size_t from) {
        if (from >= none_from_) return kNone;
        if (next_ != kNone && next_ >= from && from >= searched_from_) return next_;
        searched_from_ = from;
        next_ = Search(from);
        if (next_ == kNone) none_from_ = from;
        return next_;
    }

private:
    std::size_t Search(std::size_t from) const {
        for (std::size_t pos = text_.find(wanted_[0], from); pos != kNone; pos = text_.find(wanted_[0], pos + 1)) {
            const std::string_view candidate = text_.substr(pos, wanted_.size());
            if (EqualsIgnoringAsciiCase(candidate, wanted_)) return pos;
        }
        return kNone;
    }

    std::string_view text_, wanted_;
    std::size_t searched_from_ = 0, next_ = kNone;
    std::size_t none_from_ = text_.size();  // no occurrence from here on
};

// Chinese and Japanese characters and their punctuation, between which a line end is no blank: U+2E80 to U+9FFF, U+F900 to
// U+FAFF, U+FF00 to U+FF5F, U+20000 and above. `text` starts with a character.
bool StartsWide(std::string_view text) {
    if (text.size() < 3) return false;
    const unsigned char lead = ToByte(text[0]), second = ToByte(text[1]);
    return (lead == 0xE2 && second >= 0xBA) || (lead >= 0xE3 && lead <= 0xE9) ||
           (lead == 0xEF && (second == 0xA4 || second == 0xA5 || second == 0xA6 || second == 0xA7 || second == 0xA8 ||
                             second == 0xAB || second == 0xBC || second == 0xBD)) ||
           (lead == 0xF0 && second >= 0xA0);
}

bool EndsWide(std::string_view text) {
    std::size_t start = text.size();
    while (start > 0 && text.size() - start < 4 && IsUtf8Continuation(ToByte(text[--start])))
        ;
    return StartsWide(text.substr(start));
}

// The text so far and what stands between it and the next character: line ends, or blanks, or nothing. Line ends and
// blanks are written only when text follows, so that none are left at the ends of lines.
class TextWriter {
public:
    explicit TextWriter(std::size_t expected) { text_.reserve(expected); }

    // Well-formed text without blanks at its ends.
    void Append(std::string_view text) {
        if (line_ends_ != 0 || blank_ || !verbatim_blanks_.empty()) WriteGap(text);
        text_ += text;
    }
    // Ends the line if there is anything on it.
    void EndLine() { SetLineEnds(std::max<std::size_t>(line_ends_, 1)); }
    void BreakLine() { SetLineEnds(line_ends_ + 1); }
    void AddBlank() {
        blank_ = true;
        soft_ = false;
    }
    // A line end of the source, which is a blank, or nothing within Chinese text.
    void AddSoftBlank() {
        soft_ = soft_ || !blank_;
        blank_ = true;
    }
    void AddVerbatimBlank(char blank) { verbatim_blanks_ += blank; }

    std::string Take() { return std::move(text_); }

private:
    void SetLineEnds(std::size_t line_ends) {
        line_ends_ = line_ends;
        blank_ = false;
        verbatim_blanks_.clear();
    }
    void WriteGap(std::string_view next) {
        constexpr std::size_t kMostLineEnds = 2;
        if (!text_.empty()) {
            for (std::size_t i = 0; i < std::min(line_ends_, kMostLineEnds); ++i) text_ += '\n';
            if (blank_ && line_ends_ == 0 && verbatim_blanks_.empty() &&
                !(soft_ && EndsWide(text_) && StartsWide(next)))
                text_ += ' ';
        }
        text_ += verbatim_blanks_;
        SetLineEnds(0);
    }

    std::string text_;
    std::string verbatim_blanks_;
    std::size_t line_ends_ = 0;
    bool blank_ = false;
    bool soft_ = false;  // the blank is nothing but line ends of the source
};

class PageReader {
public:
    explicit PageReader(std::string_view html)
        : html_(html),
          writer_(html.size()),
          comment_end_(html, "-->"),
          tag_end_(html, ">"),
          double_quote_(html, "\""),
          single_quote_(html, "'"),
          script_end_(html, "</script"),
          style_end_(html, "</style"),
          title_end_(html, "</title"),
          textarea_end_(html, "</textarea") {}

    std::string Run() {
        while (pos_ < html_.size()) Step();
        return writer_.Take();
    }

private:
    void Step() {
        switch (ClassOf(html_[pos_])) {
            case ByteClass::kMarkup:
                ReadMarkup();
                break;
            case ByteClass::kReference:
                ReadCharacterReference();
                break;
            case ByteClass::kBlank:
                ReadBlanks();
                break;
            case ByteClass::kNul:
                Replace(1);
                break;
            default:
                ReadText();
        }
    }

    void Replace(std::size_t length) {
        writer_.Append(kUtf8Replacement);
        pos_ += length;
    }

    // The character at `pos_` is text, and so is one that is left over from a construct that was none.
    void ReadText() {
        const std::size_t start = pos_;
        Utf8Sequence sequence{0, true};
        while (pos_ < html_.size()) {
            const ByteClass kind = ClassOf(html_[pos_]);
            if (kind == ByteClass::kPlain) {
                SkipWords();
            } else if (kind == ByteClass::kHigh) {
                const char *const high = html_.data() + pos_, *const end = html_.data() + html_.size();
                if (const char* const behind = SkipThreeByteSequences(high, end); behind != high) {
                    pos_ += static_cast<std::size_t>(behind - high);
                    continue;
                }
                sequence = ReadUtf8Sequence(high, static_cast<std::size_t>(end - high));
                if (!sequence.valid || IsNoBreakSpace()) break;
                pos_ += sequence.length;
            } else if (html_[pos_] == ' ' && pos_ > start && IsTextAt(pos_ + 1)) {
                ++pos_;  // one blank between words
            } else {
                break;
            }
        }
        if (pos_ > start) writer_.Append(html_.substr(start, pos_ - start));
        if (!sequence.valid) {
            Replace(sequence.length);
        } else if (IsNoBreakSpace()) {
            AddBlank(' ');
            pos_ += 2;
        }
    }

    // Steps over the byte at `pos_`, which is plain, and those behind it that are, with one blank between two of them.
    void SkipWords() {
        ++pos_;
#ifdef __SSE2__
        // The last byte of a block is left for the next one, as the byte behind it tells whether a blank ends the words.
        constexpr std::size_t kBlock = 16;
        while (html_.size() - pos_ >= kBlock) {
            const unsigned stops = StopsInBlock(html_.data() + pos_) & 0x7FFF;
            pos_ += stops == 0 ? kBlock - 1 : static_cast<std::size_t>(__builtin_ctz(stops));
            if (stops != 0) return;
        }
#endif
        while (pos_ < html_.size() && ClassOf(html_[pos_]) == ByteClass::kPlain) ++pos_;
    }

#ifdef __SSE2__
    // A bit for each of 16 bytes: those that are neither plain nor a blank in front of a plain byte.
    static unsigned StopsInBlock(const char* block) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
        const auto are = [bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
        // Compared as signed numbers, high bytes are below all others. Bytes up to 13 count as blanks, which is looked at again.
        const __m128i low_or_high = _mm_cmplt_epi8(bytes, _mm_set1_epi8(14));
        const __m128i markup = _mm_or_si128(are('<'), are('&'));
        const auto others = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(low_or_high, markup)));
        const auto blanks = static_cast<unsigned>(_mm_movemask_epi8(are(' ')));
        return others | (blanks & (others | blanks) >> 1);
    }
#endif

    // Whether a character stands there that no blank becomes one with; it may be malformed.
    bool IsTextAt(std::size_t pos) const {
        if (pos == html_.size()) return false;
        const ByteClass kind = ClassOf(html_[pos]);
        return kind == ByteClass::kPlain || (kind == ByteClass::kHigh && html_[pos] != '\xC2');
    }
    bool IsAt(std::size_t pos, char c) const {
        return pos < html_.size() && html_[pos] == c;
    }
    bool IsNoBreakSpace() const {
        return IsAt(pos_, '\xC2') && IsAt(pos_ + 1, '\xA0');
    }

    bool KeepsLines() const {
        return verbatim_depth_ > 0 || !seen_markup_;
    }

    // A blank that is no line end of the source.
    void AddBlank(char blank) {
        if (verbatim_depth_ > 0) {
            writer_.AddVerbatimBlank(blank);
        } else {
            writer_.AddBlank();
        }
    }

    void ReadBlanks() {
        bool line_end = false;
        for (; pos_ < html_.size() && ClassOf(html_[pos_]) == ByteClass::kBlank; ++pos_) {
            const char blank = html_[pos_];
            if (blank == '\r' && IsAt(pos_ + 1, '\n')) continue;
            if (blank == '\n' || blank == '\r') {
                line_end = true;
                if (KeepsLines()) writer_.BreakLine();
            } else if (verbatim_depth_ > 0) {
                writer_.AddVerbatimBlank(blank);
            }
        }
        if (KeepsLines() && (line_end || verbatim_depth_ > 0)) return;
        if (line_end) {
            writer_.AddSoftBlank();
        } else {
            writer_.AddBlank();
        }
    }

    void ReadCharacterReference() {
        const Reference reference = ReadReference(html_.substr(pos_));
        const std::string_view text = reference.Text();
        if (reference.length == 0) {
            AppendLiteral();
        } else if (text == "\xC2\xA0" || (text.size() == 1 && ClassOf(text[0]) == ByteClass::kBlank)) {
            AddBlank(' ');
            pos_ += reference.length;
        } else {
            writer_.Append(text);
            pos_ += reference.length;
        }
    }

    // A "<" or "&" that starts nothing.
    void AppendLiteral() {
        writer_.Append(html_.substr(pos_, 1));
        ++pos_;
    }

    void ReadMarkup() {
        if (pos_ < plain_end_) {
            AppendLiteral();
            return;
        }
        const std::string_view rest = html_.substr(pos_);
        const std::size_t name_at = rest.size() > 1 && rest[1] == '/' ? 2 : 1;
        if (IsAt(pos_ + 1, '!') && rest.compare(0, 4, "<!--") == 0) {
            SkipBehind(comment_end_.Find(pos_ + 2), 3);  // "<!-->" is a whole comment
        } else if (rest.size() > 1 && (rest[1] == '!' || rest[1] == '?')) {
            SkipBehind(tag_end_.Find(pos_), 1);
        } else if (rest.size() > name_at && IsAsciiLetter(ToByte(rest[name_at])) && tag_end_.Find(pos_) != kNone) {
            ReadTag(name_at);
        } else {
            AppendLiteral();
        }
    }

    // Leaves out everything up to `end` and `length` bytes more; without an end the "<" is text.
    void SkipBehind(std::size_t end, std::size_t length) {
        if (end == kNone) {
            AppendLiteral();
            return;
        }
        seen_markup_ = true;
        pos_ = end + length;
    }

    void ReadTag(std::size_t name_at) {
        const std::size_t name_start = pos_ + name_at;
        std::size_t name_end = name_start;
        while (name_end < html_.size() && ClassOf(html_[name_end]) != ByteClass::kBlank && html_[name_end] != '/' &&
               html_[name_end] != '>' && html_[name_end] != '<')
            ++name_end;
        const std::size_t end = TagEnd(name_end);
        SkipBehind(end, 0);
        if (end == kNone) return;
        const Element element = kElements.Find(html_.substr(name_start, name_end - name_start));
        ApplyTag(element, name_at == 1);
        if (element == Element::kImage) ReadAlternative(name_end, end);
    }

    // The value of an attribute "alt" of the tag whose attributes stand from `pos` to `end`, as text between blanks.
    void ReadAlternative(std::size_t pos, std::size_t end) {
        const std::string_view tag = html_.substr(0, end);
        const auto skip = [&](std::string_view bytes) { pos = std::min(tag.find_first_not_of(bytes, pos), end); };
        for (skip(kBlanksAndSlash); pos < end && tag[pos] != '>' && tag[pos] != '<'; skip(kBlanksAndSlash)) {
            const std::size_t name = pos;
            pos = std::min(tag.find_first_of(" \t\n\r\f/>=", pos + 1), end);
            const bool alternative = pos - name == 3 && EqualsIgnoringAsciiCase(tag.substr(name, 3), "alt");
            skip(kBlanksAndSlash.substr(1));
            if (pos == end || tag[pos] != '=') continue;
            ++pos;
            skip(kBlanksAndSlash.substr(1));
            const bool quoted = pos < end && (tag[pos] == '"' || tag[pos] == '\'');
            const std::size_t start = quoted ? pos + 1 : pos;
            const std::size_t value_end = quoted ? tag.find(tag[pos], start) : tag.find_first_of(" \t\n\r\f>", start);
            if (quoted && value_end == kNone) return;  // a forgotten quote
            pos = std::min(value_end, end);
            if (alternative) return ReadPlain(start, pos);
            pos += quoted && pos < end;
        }
    }

    // Reads part of a tag as text without markup and goes on behind the tag.
    void ReadPlain(std::size_t start, std::size_t end) {
        const std::string_view html = std::exchange(html_, html_.substr(0, end));
        const std::size_t behind = std::exchange(pos_, start), plain_end = std::exchange(plain_end_, end);
        while (pos_ < html_.size()) Step();
        writer_.AddBlank();
        html_ = html;
        pos_ = behind;
        plain_end_ = plain_end;
    }

    void ApplyTag(Element element, bool opens) {
        switch (element) {
            case Element::kInline:
                break;
            case Element::kBlock:
                writer_.EndLine();
                break;
            case Element::kLineBreak:
                writer_.BreakLine();
                break;
            case Element::kTitle:
                writer_.EndLine();
                if (opens) KeepAsText(title_end_);
                break;
            case Element::kTextArea:
                if (opens) KeepAsText(textarea_end_);
                ApplyVerbatimTag(opens);
                break;
            case Element::kVerbatim:
                ApplyVerbatimTag(opens);
                break;
            case Element::kScript:
            case Element::kStyle:
                writer_.AddBlank();
                if (opens) SkipContent(element == Element::kScript ? script_end_ : style_end_);
                break;
            default:
                writer_.AddBlank();
        }
    }

    void ApplyVerbatimTag(bool opens) {
        writer_.EndLine();
        if (!opens) {
            verbatim_depth_ -= verbatim_depth_ > 0;
            return;
        }
        ++verbatim_depth_;
        // A line end right behind the tag is none of the text.
        if (IsAt(pos_, '\r')) ++pos_;
        if (IsAt(pos_, '\n')) ++pos_;
    }

    // In a title and the like tags are text, references are not. Without a closing tag everything is markup.
    void KeepAsText(Finder& closing) {
        const std::size_t end = closing.Find(pos_);
        if (end != kNone) plain_end_ = end;
    }

    // Leaves out the content of a script or style; the closing tag is the next step's. Without one the content stays.
    void SkipContent(Finder& closing) {
        const std::size_t end = closing.Find(pos_);
        if (end != kNone) pos_ = end;
    }

    // Position behind the tag whose name ends at `pos`. A quoted value may hold ">", but only where the closing quote
    // ends the value: a quote that was forgotten must not swallow text. A "<" ends a tag that was never closed.
    std::size_t TagEnd(std::size_t pos) {
        while (pos < html_.size()) {
            const char c = html_[pos];
            if (c == '>') return pos + 1;
            if (c == '<') return pos;
            ++pos;
            if (quotes_broken_ || (c != '"' && c != '\'')) continue;
            const std::size_t closing = (c == '"' ? double_quote_ : single_quote_).Find(pos);
            if (closing == kNone || closing + 1 >= html_.size()) continue;
            const char next = html_[closing + 1];
            if (ClassOf(next) == ByteClass::kBlank || next == '>' || next == '/') pos = closing + 1;
        }
        // Looking again at every later tag would take quadratic time.
        quotes_broken_ = true;
        return kNone;
    }

    std::string_view html_;
    std::size_t pos_ = 0;
    TextWriter writer_;
    bool seen_markup_ = false;
    std::size_t verbatim_depth_ = 0;
    std::size_t plain_end_ = 0;   // in front of this place "<" is text
    bool quotes_broken_ = false;  // a quoted value swallowed the rest of the page: quotes mean nothing any more
    Finder comment_end_, tag_end_, double_quote_, single_quote_;
    Finder script_end_, style_end_, title_end_, textarea_end_;
};

}  // namespace

std::string PageText(std::string_view html) {
    return PageReader(html).Run();
}

std::string DecodeReferences(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        const std::size_t start = std::min(text.find('&'), text.size());
        decoded += text.substr(0, start);
        text.remove_prefix(start);
        if (text.empty()) break;
        const Reference reference = ReadReference(text);
        decoded += reference.length == 0 ? text.substr(0, 1) : reference.Text();
        text.remove_prefix(std::max<std::size_t>(reference.length, 1));
    }
    return decoded;
}

}  // namespace textkit
