#include "Utility/ChineseText/NumberExpressions.h"

#include <cstddef>
#include <cstring>

#include "Internal/CharacterSet.h"
#include "Internal/EncodedList.h"
#include "Internal/Numerals.h"

namespace {

using namespace utility::internal;

// All stored as UTF-8 although they are searched for two-byte units.
constexpr auto kSigns = Utf8(kNumberSignText);
constexpr auto kSeparators = Utf8(kNumberSeparatorText);
constexpr auto kPercentSigns = Utf8(kPercentSignText);
constexpr auto kMagnitudes = Utf8(kMagnitudeText);
constexpr auto kChineseNumerals = Utf8(kChineseNumeralText);
constexpr auto kLeadingWords = Utf8(kNumberLeadingText);
constexpr std::size_t kFractionBytesCompared = 4;
static_assert(kSigns.size() == 11 && kSeparators.size() == 11 && kPercentSigns.size() == 6);
static_assert(kMagnitudes.size() == 21 && kChineseNumerals.size() == 116);
static_assert(kLeadingWords.size() == 6 && sizeof kFractionWord == 6 + 1);

// Walks over a number expression part by part. Only Read steps over two bytes for a lead byte right before
// the NUL; Unread then takes one back, so that such a byte counts as read in either case.
class NumberScanner {
public:
    NumberScanner(const char* text, std::size_t length) : text_(text), length_(length) {}

    bool AtEnd() const { return pos_ >= length_; }

    void SkipSign() {
        if (AtEnd()) return;
        Read();
        if (!kSetOf<kSigns>.Contains(unit_) && unit_.lead != '+' && unit_.lead != '-') pos_ = 0;
    }

    void SkipFullWidthNumber() {
        SkipFullWidthDigits();
        if (AtEnd()) return;
        Read();
        if (IsSeparatorBehindSomething()) {
            SkipFullWidthDigits();
        } else {
            Unread();
        }
    }

    void SkipAsciiNumber() {
        while (!AtEnd() && IsAsciiDigit(ToByte(text_[pos_]))) ++pos_;
        if (AtEnd()) return;
        Read();
        if (!IsSeparatorBehindSomething()) return Unread();
        // The byte that ends the digits stays read: it may be the percent sign, and is accepted in any case.
        do {
            ReadByte();
        } while (!AtEnd() && IsAsciiDigit(unit_.lead));
    }

    // Looks at the unit that was read last, whether or not it was unread.
    void SkipPercentSign() {
        if (kSetOf<kPercentSigns>.Contains(unit_) || unit_.lead == '%') pos_ += unit_.length();
    }

    void SkipMagnitudes() {
        bool skipped = false;
        while (!AtEnd() && kSetOf<kMagnitudes>.Contains(unit_)) {
            skipped = true;
            Read();
        }
        if (skipped && !kSetOf<kMagnitudes>.Contains(unit_)) Unread();
    }

private:
    void Read() {
        unit_ = ReadUnit(text_ + pos_);
        pos_ += BytesTaken(unit_);
    }
    void Unread() { pos_ -= unit_.length(); }

    // A single byte; NUL at the end, past which a separator of one byte may have led.
    void ReadByte() {
        unit_ = {AtEnd() ? static_cast<unsigned char>(0) : ToByte(text_[pos_]), 0};
        ++pos_;
    }

    bool IsSeparatorBehindSomething() const {
        return pos_ > unit_.length() && (kSetOf<kSeparators>.Contains(unit_) || unit_.lead == '.' || unit_.lead == '/');
    }

    void SkipFullWidthDigits() {
        while (pos_ + 1 < length_ && ToByte(text_[pos_]) == 0xA3 && ToByte(text_[pos_ + 1]) >= 0xB0 &&
               ToByte(text_[pos_ + 1]) <= 0xB9) {
            pos_ += 2;
        }
    }

    const char* text_;
    std::size_t length_;
    std::size_t pos_ = 0;
    CharacterUnit unit_;
};

}  // namespace

bool IsAllNum(const char* word, unsigned long length) {
    NumberScanner scanner(word, length == 0 ? std::strlen(word) : length);
    scanner.SkipSign();
    scanner.SkipFullWidthNumber();
    scanner.SkipAsciiNumber();
    scanner.SkipPercentSign();
    scanner.SkipMagnitudes();
    return scanner.AtEnd();
}

bool IsAllChineseNum(char* word, unsigned long length) {
    if (length == 0) length = std::strlen(word);
    for (std::size_t pos = 0; pos < length; pos += 2) {
        if (std::strncmp(word + pos, kFractionWord, kFractionBytesCompared) == 0) {
            pos += 2;
            continue;
        }
        const CharacterUnit unit{ToByte(word[pos]), ToByte(word[pos + 1])};
        if (kSetOf<kChineseNumerals>.Contains(unit)) continue;
        if (pos != 0 || !kSetOf<kLeadingWords>.Contains(unit)) return false;
    }
    return true;
}
