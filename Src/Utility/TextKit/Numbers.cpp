#include "Utility/TextKit/Numbers.h"

#include <array>
#include <limits>
#include <numeric>

#include "Internal/CodePointIndex.h"
#include "Internal/Numerals.h"
#include "Internal/Utf8Sequences.h"

namespace textkit {

namespace {

using namespace utility::internal;

static_assert(sizeof kHanDigitValues - 1 == CountCodePoints(kHanDigitText));
static_assert(sizeof kUnitPowers == CountCodePoints(kUnitText));

// value * factor + addend, for none of them negative; false where that does not fit.
bool MultiplyAdd(std::int64_t& value, std::int64_t factor, std::int64_t addend) {
    if (value > (std::numeric_limits<std::int64_t>::max() - addend) / factor) return false;
    value = value * factor + addend;
    return true;
}

constexpr int kMostPowers = 18;

// value * 10^power; false where that does not fit.
bool Scale(std::int64_t& value, int power) {
    if (value == 0) return true;
    if (power > kMostPowers) return false;
    std::int64_t factor = 1;
    for (int i = 0; i < power; ++i) factor *= 10;
    return MultiplyAdd(value, factor, 0);
}

bool IsBelowPowerOfTen(std::int64_t value, int power) {
    for (; value != 0; value /= 10)
        if (power-- == 0) return false;
    return true;
}

Number Reduced(std::int64_t numerator, std::int64_t denominator) {
    const std::int64_t divisor = std::gcd(numerator, denominator);
    return {numerator / divisor, denominator / divisor};
}

enum class Kind : unsigned char {
    kNone,
    kHanDigit,
    kTwo,          // 两
    kNarrowDigit,  // ASCII or full-width
    kUnit,         // 十 to 千
    kBigUnit,      // 万 and above
    kTens,         // 廿
    kVague,        // 几
};

struct Lexeme {
    Kind kind = Kind::kNone;
    int value = 0;  // of a unit, its power of ten
    std::size_t length = 0;
};

constexpr char kVagueText[] = "几幾";

// Whether a character may be one of the lists, by the low bits of its code point: spares most text the lists.
constexpr std::size_t kSieveSize = 1024;
using Sieve = std::array<bool, kSieveSize>;

template <std::size_t N>
constexpr void AddToSieve(Sieve& sieve, const char (&list)[N]) {
    for (std::size_t pos = 0; pos + 1 < N;) sieve[DecodeSourceCharacter(list, pos) % kSieveSize] = true;
}

constexpr Sieve kSieve = [] {
    Sieve sieve{};
    AddToSieve(sieve, kHanDigitText);
    AddToSieve(sieve, kNarrowDigitText);
    AddToSieve(sieve, kUnitText);
    AddToSieve(sieve, kTensText);
    AddToSieve(sieve, kVagueText);
    return sieve;
}();

Lexeme ClassifyBeyondAscii(std::uint32_t code_point, std::size_t length) {
    if (!kSieve[code_point % kSieveSize]) return {};
    if (const int digit = kIndexOf<kHanDigitText>.Find(code_point); digit >= 0) {
        const bool is_two = code_point == U'两' || code_point == U'兩';
        return {is_two ? Kind::kTwo : Kind::kHanDigit, kHanDigitValues[digit] - '0', length};
    }
    if (const int digit = kIndexOf<kNarrowDigitText>.Find(code_point); digit >= 0)
        return {Kind::kNarrowDigit, digit % 10, length};
    if (const int unit = kIndexOf<kUnitText>.Find(code_point); unit >= 0)
        return {kUnitPowers[unit] < 4 ? Kind::kUnit : Kind::kBigUnit, kUnitPowers[unit], length};
    if (const int tens = kIndexOf<kTensText>.Find(code_point); tens >= 0) return {Kind::kTens, tens + 2, length};
    return {kIndexOf<kVagueText>.Contains(code_point) ? Kind::kVague : Kind::kNone, 0, length};
}

class Text {
public:
    explicit Text(std::string_view text) : text_(text) {}

    std::size_t size() const { return text_.size(); }
    std::uint32_t CodePointAt(std::size_t pos) const {
        if (pos >= text_.size()) return 0;
        const Utf8Sequence sequence = ReadUtf8Sequence(text_.data() + pos, text_.size() - pos);
        return sequence.valid ? Utf8CodePoint(text_.data() + pos, sequence.length) : kReplacementCodePoint;
    }
    bool IsAt(std::size_t pos, std::string_view wanted) const {
        return pos < text_.size() && text_.compare(pos, wanted.size(), wanted) == 0;
    }
    // Length of what of the list stands there, 0 for nothing.
    template <const auto& kList>
    std::size_t LengthOf(std::size_t pos) const {
        if (pos >= text_.size() || !kIndexOf<kList>.Contains(CodePointAt(pos))) return 0;
        return ReadUtf8Sequence(text_.data() + pos, text_.size() - pos).length;
    }
    Lexeme At(std::size_t pos) const {
        if (pos >= text_.size()) return {};
        const unsigned char byte = ToByte(text_[pos]);
        if (IsAsciiDigit(byte)) return {Kind::kNarrowDigit, byte - '0', 1};
        if (byte < 0xE0) return {};
        const Utf8Sequence sequence = ReadUtf8Sequence(text_.data() + pos, text_.size() - pos);
        if (!sequence.valid) return {};
        return ClassifyBeyondAscii(Utf8CodePoint(text_.data() + pos, sequence.length), sequence.length);
    }
    bool IsNarrowDigitAt(std::size_t pos) const { return At(pos).kind == Kind::kNarrowDigit; }
    bool IsDigitAt(std::size_t pos) const {
        const Kind kind = At(pos).kind;
        return kind == Kind::kNarrowDigit || kind == Kind::kHanDigit;
    }

private:
    std::string_view text_;
};

constexpr char kNarrowPoints[] = ".．";
constexpr char kMinusText[] = "负負-−－";
constexpr char kPlusText[] = "+＋";
constexpr char kHundredthText[] = "%％";
constexpr char kThousandthText[] = "‰";

// A number without a sign, percent sign or 分之: reads on as long as characters of numbers follow, whether they make one
// or not.
class AmountReader {
public:
    AmountReader(const Text& text, std::size_t pos) : text_(text), start_(pos), pos_(pos) {}

    void Read() {
        while (!at_end_) {
            const Lexeme next = text_.At(pos_);
            if (next.kind == Kind::kNone) {
                if (!ReadPoint()) break;
                continue;
            }
            const std::size_t before = pos_;
            Take(next);
            if (pos_ == before) break;
        }
        if (!has_fraction_) FinishInteger(/*allow_shorthand=*/true);
        is_lone_unit_ = valid_ && implied_one_;
    }

    std::size_t end() const { return pos_; }
    bool empty() const { return pos_ == start_; }
    bool valid() const { return valid_ && !empty(); }
    // 百, 万 and so on with nothing in front of it.
    bool is_lone_unit() const { return is_lone_unit_; }
    std::int64_t numerator() const { return value_; }
    std::int64_t denominator() const { return denominator_; }

private:
    // A 万, 亿, … with what it multiplies.
    struct Term {
        std::int64_t value;
        int power;
    };

    void Fail() { valid_ = false; }
    void Expect(bool condition) { valid_ = valid_ && condition; }
    bool HasUnits() const { return last_power_ > 0; }

    void Take(const Lexeme& next) {
        if (has_fraction_) return TakeBehindFraction(next);
        switch (next.kind) {
            case Kind::kHanDigit:
            case Kind::kNarrowDigit:
                return TakeDigit(next);
            case Kind::kTwo:
                return TakeTwo(next);
            case Kind::kUnit:
                TakeUnit(next.value);
                break;
            case Kind::kBigUnit:
                TakeBigUnit(next.value);
                break;
            case Kind::kTens:
                Expect(digits_ == 0 && section_power_ > 1 && !implied_one_);
                AddToSection(next.value, 1);
                break;
            default:
                Fail();
        }
        pos_ += next.length;
    }

    void TakeDigit(const Lexeme& digit) {
        Expect(!implied_one_ && !is_two_);
        if (digit.kind == Kind::kHanDigit && digit.value == 0 && digits_ == 0 && HasUnits()) {
            behind_zero_ = true;
        } else {
            const bool may_have_commas = digits_ == 0 && digit.kind == Kind::kNarrowDigit;
            AddDigit(digit);
            if (may_have_commas) return TakeGroupedDigits(pos_ + digit.length);
        }
        pos_ += digit.length;
    }

    void AddDigit(const Lexeme& digit) {
        has_han_digits_ = has_han_digits_ || digit.kind == Kind::kHanDigit;
        if (digits_ < 100) ++digits_;
        Expect(MultiplyAdd(pending_, 10, digit.value));
    }

    // The narrow digits from `pos` on, and groups of three of them behind commas.
    void TakeGroupedDigits(std::size_t pos) {
        Lexeme next;
        while ((next = text_.At(pos)).kind == Kind::kNarrowDigit) {
            AddDigit(next);
            pos += next.length;
        }
        const bool may_be_grouped = digits_ <= 3;
        for (std::size_t end; may_be_grouped && (end = EndOfGroup(pos)) != 0; pos = end) {
            for (std::size_t digit = pos + 1; digit != end; digit += next.length) AddDigit(next = text_.At(digit));
        }
        pos_ = pos;
    }

    // Where the three digits end that stand, of any width, behind the comma at `comma`; 0 if they do not.
    std::size_t EndOfGroup(std::size_t comma) const {
        if (!text_.IsAt(comma, ",")) return 0;
        std::size_t pos = comma + 1;
        for (int i = 0; i < 3; ++i) {
            const Lexeme digit = text_.At(pos);
            if (digit.kind != Kind::kNarrowDigit) return 0;
            pos += digit.length;
        }
        return text_.IsNarrowDigitAt(pos) ? 0 : pos;
    }

    // 两 in front of a unit or alone is a number; behind one it is a measure, and the number ends.
    void TakeTwo(const Lexeme& two) {
        const Kind behind = text_.At(pos_ + two.length).kind;
        const bool counts = behind == Kind::kUnit || behind == Kind::kBigUnit;
        if (!counts && (digits_ > 0 || HasUnits())) {
            at_end_ = true;
            return;
        }
        Expect(digits_ == 0 && !implied_one_);
        pending_ = 2;
        digits_ = 1;
        is_two_ = has_han_digits_ = true;
        pos_ += two.length;
    }

    void AddToSection(std::int64_t count, int power) {
        Expect(power < section_power_ && Scale(count, power));
        Expect(MultiplyAdd(section_, 1, count));
        section_power_ = last_power_ = power;
        ClearPending();
    }
    void ClearPending() {
        pending_ = 0;
        digits_ = 0;
        has_han_digits_ = is_two_ = behind_zero_ = false;
    }

    void TakeUnit(int power) {
        Expect(!implied_one_);
        if (digits_ == 0) {
            const bool is_first = !HasUnits();
            Expect(power == 1 || is_first);
            AddToSection(1, power);
            implied_one_ = power > 1;
            return;
        }
        Expect(pending_ != 0 && (!has_han_digits_ || digits_ == 1));
        // 2千500百 counts a hundred too often.
        Expect(section_power_ == kSectionPowers ? terms_ == 0 || IsBelowPowerOfTen(pending_, kSectionPowers - power)
                                                : IsBelowPowerOfTen(pending_, section_power_ - power));
        AddToSection(pending_, power);
    }

    void TakeBigUnit(int power) {
        if (digits_ == 0 && section_ == 0) {
            TakeAdjacentBigUnit(power);
        } else {
            Expect(!behind_zero_ || digits_ > 0);
            if (digits_ > 0) {
                Expect(section_power_ == kSectionPowers ? !has_han_digits_ || digits_ == 1
                                                        : behind_zero_ || section_power_ == 1);
                Expect(MultiplyAdd(section_, 1, pending_) && section_ != 0);
            }
            std::int64_t sum = section_;
            while (terms_ > 0 && stack_[terms_ - 1].power < power) Expect(MultiplyAdd(sum, 1, stack_[--terms_].value));
            Push(sum, power, power);
        }
        last_big_power_ = power;
        section_ = 0;
        section_power_ = kSectionPowers;
        ClearPending();
    }

    // 万 with nothing in front of it, or 亿 right behind 万.
    void TakeAdjacentBigUnit(int power) {
        if (terms_ == 0) {
            Expect(!behind_zero_ && !HasUnits());
            Push(1, power, power);
            implied_one_ = true;
        } else {
            Expect(!behind_zero_ && power >= last_big_power_);
            const Term term = stack_[--terms_];
            Push(term.value, power, term.power + power);
        }
    }

    // A term of `value` times ten to the `factor`th; smaller than every digit of the term in front of it.
    void Push(std::int64_t value, int factor, int power) {
        implied_one_ = false;
        Expect(Scale(value, factor));
        if (terms_ > 0) Expect(IsBelowPowerOfTen(value, stack_[terms_ - 1].power));
        if (terms_ == stack_.size()) return Fail();
        stack_[terms_++] = {value, power};
        last_power_ = power;
    }

    // The sum of everything so far into value_. Shorthand is a last digit that counts the next lower unit.
    void FinishInteger(bool allow_shorthand) {
        std::int64_t rest = pending_;
        const bool is_shorthand = HasUnits() && digits_ == 1 && !behind_zero_ && last_power_ > 1 && pending_ != 0;
        if (is_shorthand) Expect(allow_shorthand && !is_two_ && Scale(rest, last_power_ - 1));
        if (HasUnits() && digits_ > 1) Expect(!has_han_digits_ && IsBelowPowerOfTen(pending_, last_power_));
        if (HasUnits() && digits_ == 0) Expect(!behind_zero_);
        Expect(MultiplyAdd(section_, 1, rest));
        if (terms_ > 0) Expect(IsBelowPowerOfTen(section_, stack_[terms_ - 1].power));
        value_ = section_;
        while (terms_ > 0) Expect(MultiplyAdd(value_, 1, stack_[--terms_].value));
    }

    // A decimal point and the digits behind it; false if there is none here.
    bool ReadPoint() {
        if (empty()) return false;
        std::size_t length = text_.LengthOf<kPointText>(pos_);
        if (length > 0) {
            // 三点五十 is a time of day.
            std::size_t behind = pos_ + length;
            if (!text_.IsDigitAt(behind)) return false;
            while (text_.IsDigitAt(behind)) behind += text_.At(behind).length;
            const Lexeme next = text_.At(behind);
            if (next.kind == Kind::kTens || (next.kind == Kind::kUnit && next.value == 1)) return false;
        } else {
            length = text_.LengthOf<kNarrowPoints>(pos_);
            if (length == 0 || !text_.IsNarrowDigitAt(pos_ + length)) return false;
            Expect(!has_han_digits_ && !HasUnits());
        }
        Expect(!has_fraction_ && !implied_one_);
        if (!has_fraction_) FinishInteger(/*allow_shorthand=*/false);
        has_fraction_ = true;
        pos_ += length;
        ReadFraction();
        return true;
    }

    void ReadFraction() {
        int zeros = 0;  // not yet counted, since they may be the last
        for (; text_.IsDigitAt(pos_); pos_ += text_.At(pos_).length) {
            const int digit = text_.At(pos_).value;
            if (digit == 0) {
                if (zeros < 100) ++zeros;
                continue;
            }
            Expect(zeros < kMostPowers && Scale(value_, zeros + 1) && Scale(denominator_, zeros + 1) &&
                   MultiplyAdd(value_, 1, digit));
            zeros = 0;
        }
    }

    // 亿 of 1.5亿 and the like.
    void TakeBehindFraction(const Lexeme& next) {
        if (next.kind == Kind::kTwo) {
            at_end_ = true;
            return;
        }
        pos_ += next.length;
        Expect((next.kind == Kind::kUnit || next.kind == Kind::kBigUnit) && next.value >= last_fraction_power_);
        if (!valid_) return;
        last_fraction_power_ = next.value;
        int power = next.value;
        for (; power > 0 && denominator_ > 1; --power) denominator_ /= 10;
        Expect(Scale(value_, power));
    }

    static constexpr int kSectionPowers = 4;

    const Text& text_;
    std::size_t start_, pos_;
    bool at_end_ = false, valid_ = true, is_lone_unit_ = false;

    // Digits that no unit has followed yet.
    std::int64_t pending_ = 0;
    int digits_ = 0;
    bool has_han_digits_ = false, is_two_ = false, behind_zero_ = false;

    // Thousands to tens since the last 万 or 亿, and the power of the last of them.
    std::int64_t section_ = 0;
    int section_power_ = kSectionPowers;

    // 亿, 万, …: the terms, each smaller than those before it.
    std::array<Term, 8> stack_{};
    std::size_t terms_ = 0;
    int last_big_power_ = 0;

    int last_power_ = 0;        // of the last unit, 0 for none
    bool implied_one_ = false;  // the last character is a unit without a digit

    std::int64_t value_ = 0, denominator_ = 1;
    bool has_fraction_ = false;
    int last_fraction_power_ = 0;
};

struct Run {
    std::size_t end = 0;
    std::optional<Number> value;
    bool is_lone_unit = false;
};

std::optional<Number> Value(const AmountReader& amount) {
    if (!amount.valid()) return std::nullopt;
    return Reduced(amount.numerator(), amount.denominator());
}

// `part` / `whole` of 三分之一, where the whole comes first.
std::optional<Number> Fraction(const AmountReader& whole, const AmountReader& part) {
    const std::optional<Number> divisor = Value(whole), dividend = Value(part);
    if (!divisor || !dividend || !divisor->IsInteger() || divisor->numerator == 0) return std::nullopt;
    // Reduced crosswise, so that the product is as small as it can be.
    const Number half_reduced = Reduced(dividend->numerator, divisor->numerator);
    std::int64_t denominator = half_reduced.denominator;
    if (!MultiplyAdd(denominator, dividend->denominator, 0)) return std::nullopt;
    return Reduced(half_reduced.numerator, denominator);
}

std::optional<Number> Divided(std::optional<Number> value, std::int64_t divisor) {
    if (!value) return value;
    const Number half_reduced = Reduced(value->numerator, divisor);
    std::int64_t denominator = half_reduced.denominator;
    if (!MultiplyAdd(denominator, value->denominator, 0)) return std::nullopt;
    return Number{half_reduced.numerator, denominator};
}

std::optional<Number> Sum(std::optional<Number> integer, std::optional<Number> fraction) {
    if (!integer || !fraction || !integer->IsInteger()) return std::nullopt;
    if (!MultiplyAdd(integer->numerator, fraction->denominator, fraction->numerator)) return std::nullopt;
    return Reduced(integer->numerator, fraction->denominator);
}

// What follows 分之 at `pos`, or an empty amount.
AmountReader ReadPart(const Text& text, std::size_t pos) {
    AmountReader part(text, pos + sizeof kFractionWord - 1);
    if (text.IsAt(pos, kFractionWord)) part.Read();
    return part;
}

// The characters of a number from `pos` on, and its value if it has one.
Run ReadRun(const Text& text, std::size_t pos) {
    AmountReader amount(text, pos);
    amount.Read();
    if (amount.empty()) return {pos, std::nullopt};
    std::size_t end = amount.end();
    if (const AmountReader part = ReadPart(text, end); !part.empty()) return {part.end(), Fraction(amount, part)};
    constexpr std::string_view kAnd = "又", kHalf = "半";
    if (text.IsAt(end, kAnd)) {
        AmountReader whole(text, end + kAnd.size());
        whole.Read();
        const AmountReader part = ReadPart(text, whole.end());
        if (!whole.empty() && !part.empty()) return {part.end(), Sum(Value(amount), Fraction(whole, part))};
    }
    if (text.IsAt(end, kHalf) && end - pos == kHalf.size() && Value(amount) == Number{1, 1})
        return {end + kHalf.size(), Number{1, 2}};
    if (const std::size_t length = text.LengthOf<kHundredthText>(end))
        return {end + length, Divided(Value(amount), 100)};
    if (const std::size_t length = text.LengthOf<kThousandthText>(end))
        return {end + length, Divided(Value(amount), 1000)};
    return {end, Value(amount), amount.is_lone_unit()};
}

// 1/2: the run of the dividend is read, the divisor is all the rest.
std::optional<Number> ReadQuotient(const Text& text, std::size_t slash, const Run& dividend) {
    static constexpr char kSlashes[] = "/／";
    const std::size_t length = text.LengthOf<kSlashes>(slash);
    if (length == 0 || !dividend.value || !dividend.value->IsInteger()) return std::nullopt;
    if (!text.IsNarrowDigitAt(slash + length)) return std::nullopt;
    const Run divisor = ReadRun(text, slash + length);
    if (divisor.end != text.size() || !divisor.value || !divisor.value->IsInteger() || divisor.value->numerator == 0)
        return std::nullopt;
    return Reduced(dividend.value->numerator, divisor.value->numerator);
}

// Whether `text` up to `pos` ends in a character of a Latin word, or in a point.
bool IsInsideWord(std::string_view text, std::size_t pos) {
    if (pos == 0) return false;
    const unsigned char before = ToByte(text[pos - 1]);
    return IsAsciiLetter(before) || before == '_' || before == '.';
}

std::size_t SkipWord(std::string_view text, std::size_t pos) {
    const auto is_inside = [](unsigned char byte) {
        return IsAsciiLetter(byte) || IsAsciiDigit(byte) || byte == '_' || byte == '.';
    };
    while (pos < text.size() && is_inside(ToByte(text[pos]))) ++pos;
    return pos;
}

// Length of the sign that ends at `pos` and starts at `earliest` or later, 0 for none.
std::size_t SignLength(std::string_view text, std::size_t earliest, std::size_t pos) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{3}}) {
        if (pos < earliest + length) return 0;
        const std::size_t sign = pos - length;
        const Text whole(text.substr(0, pos));
        if (whole.LengthOf<kMinusText>(sign) != length && whole.LengthOf<kPlusText>(sign) != length) continue;
        if (ToByte(text[sign]) == 0xE8) return length;  // 负, 負
        const unsigned char before = sign == 0 ? ' ' : ToByte(text[sign - 1]);
        const bool ends_something = IsAsciiLetter(before) || IsAsciiDigit(before) || before == ')' || before == ']' ||
                                    before == '-' || before == '+' || before == '_';
        return ends_something || (sign != 0 && sign == earliest) ? 0 : length;
    }
    return 0;
}

}  // namespace

std::optional<Number> ParseNumber(std::string_view text) {
    if (text == "半") return Number{1, 2};
    const Text whole(text);
    const std::size_t minus = whole.LengthOf<kMinusText>(0), plus = whole.LengthOf<kPlusText>(0);
    const Run run = ReadRun(whole, minus + plus);
    std::optional<Number> value = run.value;
    if (run.end != text.size()) value = ReadQuotient(whole, run.end, run);
    if (value && minus > 0) value->numerator = -value->numerator;
    return value;
}

bool NumberCursor::Advance() {
    const Text whole(text);
    std::size_t earliest = pos;  // behind what was read as a number before
    while (pos < text.size()) {
        const Lexeme first = whole.At(pos);
        const bool is_measure = first.kind == Kind::kTwo && pos == earliest && pos > 0;  // 三百两
        if (first.kind == Kind::kNone || is_measure) {
            pos += is_measure ? first.length : 1;
        } else if (IsAscii(ToByte(text[pos])) && IsInsideWord(text, pos)) {
            pos = SkipWord(text, pos);
        } else {
            const std::size_t start = pos;
            const Run run = ReadRun(whole, start);
            const bool is_vague = text.substr(0, start).size() >= 3 &&
                                  (first.kind == Kind::kUnit || first.kind == Kind::kBigUnit) &&
                                  (text.compare(start - 3, 3, "数") == 0 || text.compare(start - 3, 3, "數") == 0);
            pos = run.end > start ? run.end : start + first.length;
            const std::size_t sign = SignLength(text, earliest, start);
            earliest = pos;
            if (!run.value || run.is_lone_unit || is_vague) continue;
            item = {text.substr(start - sign, pos - start + sign), *run.value};
            if (sign > 0 && whole.LengthOf<kMinusText>(start - sign) > 0) item.value.numerator = -item.value.numerator;
            return true;
        }
    }
    return false;
}

}  // namespace textkit
