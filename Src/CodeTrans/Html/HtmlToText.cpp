#include "CodeTrans/Html/HtmlToText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

#include "CodeTrans/Primitives/Utf8.h"
#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

constexpr bool IsUpperHexDigit(unsigned char byte) {
    return IsAsciiDigit(byte) || (byte >= 'A' && byte <= 'F');
}

// What two bytes in a row may start. Looking at both keeps a text of single starters as cheap as any other.
enum Start : unsigned { kTag = 1, kReference = 2, kEscape = 4, kBareBlank = 8, kBlanks = 16 };

// By byte: in the low half what it may start as the first of the two, in the high half what it admits as the
// second.
using StartTable = std::array<std::uint16_t, 256>;

constexpr unsigned AdmittedBy(unsigned char second) {
    unsigned starts = 0;
    if (IsAsciiLetter(second)) starts |= kTag | kReference;
    if (second == '/' || second == '!' || second == '?') starts |= kTag;
    if (second == '#') starts |= kReference;
    if (IsUpperHexDigit(second)) starts |= kEscape;
    if (second == 'b') starts |= kBareBlank;
    if (second == ' ') starts |= kBlanks;
    return starts;
}

constexpr StartTable AllStarts() {
    StartTable starts{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        starts[byte] = static_cast<std::uint16_t>(AdmittedBy(static_cast<unsigned char>(byte)) << 8);
    }
    starts['<'] |= kTag;
    starts['&'] |= kReference;
    starts['%'] |= kEscape;
    starts['n'] |= kBareBlank;
    starts[' '] |= kBlanks;
    return starts;
}

constexpr StartTable kAllStarts = AllStarts();

// Looks for a literal from ever later places of one text and remembers what it found, be it nothing: all
// calls together read each byte once, however often the same literal is wanted. `kAnchor` is the index of its
// rarest byte.
template <std::size_t kAnchor, char... kLiteral>
class Finder {
public:
    // Nothing is found or read from `end` on.
    Finder(const char* text, std::size_t end) : text_(text), end_(end) {}

    // The place behind the first occurrence that starts at or after `from`, or kNone. `from` must not go back
    // from call to call.
    std::size_t Find(std::size_t from) {
        if (behind_ < from + kSize) behind_ = Search(from);
        return behind_;
    }

private:
    static constexpr char kBytes[] = {kLiteral...};
    static constexpr std::size_t kSize = sizeof kBytes;

    std::size_t Search(std::size_t from) const {
        for (; from + kSize <= end_; ++from) {
            const void* const anchor = std::memchr(text_ + from + kAnchor, kBytes[kAnchor], end_ - from - kAnchor);
            if (anchor == nullptr) return kNone;
            from = static_cast<std::size_t>(static_cast<const char*>(anchor) - text_) - kAnchor;
            if (from + kSize <= end_ && std::memcmp(text_ + from, kBytes, kSize) == 0) return from + kSize;
        }
        return kNone;
    }

    const char* text_;
    std::size_t end_;
    std::size_t behind_ = 0;
};

// The text written so far. Blanks that lead or repeat count as written but are not kept.
class TextWriter {
public:
    TextWriter(char* text, std::size_t capacity) : text_(text), capacity_(capacity == 0 ? kNone : capacity) {}

    bool IsFull() const { return written_ >= capacity_; }
    std::size_t Room() const { return capacity_ - written_; }
    bool EndsWithBlank() const { return previous_ == ' '; }

    void Write(char c) {
        ++written_;
        previous_ = c;
        if (c == '\0') {
            capacity_ = 0;  // nothing behind it would be part of the text
        } else if (c != ' ' || (kept_ != 0 && text_[kept_ - 1] != ' ')) {
            text_[kept_++] = c;
        }
    }
    // `count` bytes, one at least: no zero, no blank first and none behind another.
    void WriteRun(const char* bytes, std::size_t count) {
        std::memcpy(text_ + kept_, bytes, count);
        written_ += count;
        kept_ += count;
        previous_ = bytes[count - 1];
    }
    std::size_t Finish() {
        text_[kept_] = '\0';
        return kept_;
    }

private:
    char* text_;
    std::size_t capacity_;
    std::size_t written_ = 0;
    std::size_t kept_ = 0;
    char previous_ = '\0';
};

// One pass over a page. Each rule looks at what stands at `pos`, writes what it makes of it and returns the
// place behind it, or kNone, having written nothing, where it does not apply.
class PageScanner {
public:
    PageScanner(const char* html, std::size_t length, TextWriter& writer)
        : html_(html),
          length_(length),
          visible_(strnlen(html, length + kNumericSpan)),
          end_(std::min(length, visible_)),
          writer_(writer) {}

    void Run() {
        std::size_t pos = length_ >= 3 && std::memcmp(html_, "\xEF\xBB\xBF", 3) == 0 ? 3 : 0;
        while (pos < end_ && !writer_.IsFull()) {
            const std::size_t behind_markup = TakeMarkup(pos);
            pos = behind_markup != kNone ? behind_markup : CopyRun(pos);
        }
    }

private:
    static constexpr std::size_t kScriptOpening = 8;  // bytes of <script>
    // How far the last byte may lie behind the first.
    static constexpr std::size_t kTagSpan = 499, kNamedSpan = 9, kNumericSpan = 10;

    // Bytes of the input behind the one at `pos`.
    std::size_t Following(std::size_t pos) const { return length_ - pos - 1; }
    // Where searches end: at the NUL, or `beyond` bytes behind the input.
    std::size_t SearchEnd(std::size_t beyond) const { return std::min(visible_, length_ + beyond); }

    // Copies the byte at `pos` and those after it that start nothing.
    std::size_t CopyRun(std::size_t pos) {
        const char first = html_[pos];
        if (first == ' ') {
            if (!writer_.EndsWithBlank()) writer_.Write(first);
            return pos + 1;
        }
        const std::size_t limit = pos + std::min(end_ - pos, writer_.Room());
        const std::size_t end = FindStart(pos + 1, limit);
        writer_.WriteRun(html_ + pos, end - pos);
        return end;
    }

    // The next place from `pos` on that starts something, or `limit`. The byte behind the last one is there
    // to be read, as the first NUL comes no earlier.
    std::size_t FindStart(std::size_t pos, std::size_t limit) const {
        unsigned starts = starts_[ToByte(html_[pos])];
        for (; pos < limit; ++pos) {
            const unsigned next = starts_[ToByte(html_[pos + 1])];
            if ((starts & next >> 8) != 0) break;
            starts = next;
        }
        return pos;
    }

    std::size_t TakeMarkup(std::size_t pos) {
        switch (starts_[ToByte(html_[pos])] & starts_[ToByte(html_[pos + 1])] >> 8) {
            case kTag:
                return TakeTag(pos);
            case kReference:
                return TakeReference(pos);
            case kEscape:
                return TakePercentEscape(pos);
            case kBareBlank:
                return TakeBareBlank(pos);
            default:
                return kNone;
        }
    }

    // One byte for all that stands before `behind`; nothing for kNone.
    std::size_t TakeAs(char c, std::size_t behind) {
        if (behind != kNone) writer_.Write(c);
        return behind;
    }

    std::size_t TakeTag(std::size_t pos) {
        if (Following(pos) >= 15 && IsScriptOpening(pos)) {
            const std::size_t behind_script = FindScriptEnd(pos + kScriptOpening);
            return behind_script != kNone ? TakeAs(' ', behind_script) : CopyScriptOpening(pos);
        }
        const std::size_t behind = tag_end_.Find(pos);
        if (behind == kNone) {
            starts_['<'] &= 0xFF00;  // no tag and no comment ends from here on
            return kNone;
        }
        if (Following(pos) >= 4 && std::memcmp(html_ + pos + 1, "!--", 3) == 0) {
            return TakeAs(' ', comment_end_.Find(pos));
        }
        return TakeAs(' ', behind <= length_ && behind - 1 - pos <= kTagSpan ? behind : kNone);
    }

    // As the bytes of <script> start nothing, an opening without an end goes out in one piece where there is
    // room.
    std::size_t CopyScriptOpening(std::size_t pos) {
        if (writer_.Room() < kScriptOpening) return kNone;
        writer_.WriteRun(html_ + pos, kScriptOpening);
        return pos + kScriptOpening;
    }

    // Compares eight bytes at once, the last of which may be anything.
    bool IsScriptOpening(std::size_t pos) const {
        constexpr char kName[] = {'s', 'c', 'r', 'i', 'p', 't', '>', '\xFF'};
        constexpr char kEitherCase[] = {0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0, '\xFF'};
        return (LoadWord(html_ + pos + 1) | LoadWord(kEitherCase)) == LoadWord(kName);
    }
    static std::uint64_t LoadWord(const char* bytes) {
        std::uint64_t word;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }

    // A script is closed by </s, or by </S if there is no </s up to the NUL, the end of the input
    // notwithstanding.
    std::size_t FindScriptEnd(std::size_t content) {
        std::size_t closing = lower_closing_.Find(content);
        if (closing == kNone) {
            closing = upper_closing_.Find(content);
            if (closing == kNone || HasClosingBeyond()) return kNone;
        }
        return script_end_.Find(closing);
    }
    bool HasClosingBeyond() {
        if (!has_closing_beyond_) {
            has_closing_beyond_ = visible_ >= length_ && std::strstr(html_ + length_, "</s") != nullptr;
        }
        return *has_closing_beyond_;
    }

    std::size_t TakeReference(std::size_t pos) {
        if (Following(pos) < 1) return kNone;
        const std::size_t behind = semicolon_.Find(pos);
        if (behind == kNone) {
            starts_['&'] &= 0xFF00;  // no reference ends from here on
            return kNone;
        }
        const std::size_t span = behind - 1 - pos;
        const char* const name = html_ + pos + 1;
        if (*name == '#') return span <= kNumericSpan && Following(pos) >= 2 ? TakeNumber(name + 1, behind) : kNone;
        if (span == 3 && std::memcmp(name, "lt", 2) == 0) return TakeAs('<', behind);
        if (span == 3 && std::memcmp(name, "gt", 2) == 0) return TakeAs('>', behind);
        return TakeAs(' ', span <= kNamedSpan && behind <= length_ ? behind : kNone);
    }

    // `behind`, the place behind the semicolon, may lie beyond the end of the input.
    std::size_t TakeNumber(const char* digits, std::size_t behind) {
        const long value = ReadNumber(digits);
        if (value >= 127 && value <= 254) return TakeAs(' ', behind);
        unsigned char utf8[6];
        const int count = unicode_to_utf8_one(static_cast<unsigned long>(value), utf8, sizeof utf8);
        for (int i = 0; i < count; ++i) writer_.Write(ToChar(utf8[i]));
        return behind;
    }

    // As atol reads it, without the locale: white space, a sign, digits. The semicolon is so near that there
    // are eight digits at most.
    static long ReadNumber(const char* text) {
        static constexpr ByteSet kWhiteSpace(" \t\n\v\f\r");
        while (kWhiteSpace.Contains(*text)) ++text;
        const bool negative = *text == '-';
        if (*text == '-' || *text == '+') ++text;
        long value = 0;
        for (; IsAsciiDigit(ToByte(*text)); ++text) value = value * 10 + (*text - '0');
        return negative ? -value : value;
    }

    std::size_t TakePercentEscape(std::size_t pos) {
        if (Following(pos) < 2 || !IsUpperHexDigit(ToByte(html_[pos + 2]))) return kNone;
        return TakeAs(x2c(html_ + pos + 1), pos + 3);
    }

    // A non-breaking blank whose & was lost.
    std::size_t TakeBareBlank(std::size_t pos) {
        if (Following(pos) < 5 || std::memcmp(html_ + pos, "nbsp;", 5) != 0) return kNone;
        if (writer_.EndsWithBlank()) writer_.Write(' ');
        return pos + 5;
    }

    const char* const html_;
    const std::size_t length_;
    const std::size_t visible_;  // bytes before the NUL, as far as any rule looks
    const std::size_t end_;      // of the scan: a zero byte in the input ends the text
    TextWriter& writer_;
    StartTable starts_ = kAllStarts;
    std::optional<bool> has_closing_beyond_;
    // Literals of three bytes count where they start before the end of the input; a tag may be a comment.
    Finder<0, '>'> tag_end_{html_, SearchEnd(2)}, script_end_{html_, SearchEnd(0)};
    Finder<2, '-', '-', '>'> comment_end_{html_, SearchEnd(2)};
    Finder<1, '<', '/', 's'> lower_closing_{html_, SearchEnd(2)};
    Finder<1, '<', '/', 'S'> upper_closing_{html_, SearchEnd(2)};
    Finder<0, ';'> semicolon_{html_, visible_};
};

// Bytes are taken as signed, so that those from 80 on count as below 'A' on every machine.
constexpr int HexDigitValue(char digit) {
    const int value = ToByte(digit) < 0x80 ? digit : ToByte(digit) - 0x100;
    return value < 'A' ? value - '0' : (value & 0xDF) - 55;
}

}  // namespace

int vHtmlToText(const char* html, unsigned long length, char* text, unsigned long& text_length) {
    TextWriter writer(text, text_length);
    PageScanner(html, length, writer).Run();
    text_length = writer.Finish();
    return 0;
}

char x2c(const char* digits) {
    return ToChar(static_cast<unsigned>(HexDigitValue(digits[0]) * 16 + HexDigitValue(digits[1])));
}

int iURIDecode(char* uri, int length, char* decoded, int& decoded_length) {
    const char* const start = decoded;
    for (int left = length; left > 0; --left) {
        if (*uri == '%' && left > 2) {
            *decoded++ = x2c(uri + 1);
            uri += 3;
            left -= 2;
        } else {
            *decoded++ = *uri++;
        }
    }
    decoded_length = static_cast<int>(decoded - start);
    return 0;
}
