#include "Utility/TextKit/Dates.h"

#include <string>

#include "Internal/AsciiCase.h"
#include "Internal/CodePointIndex.h"
#include "Internal/Numerals.h"
#include "Utility/DateTime/DateUnits.h"
#include "Utility/TextKit/ChineseText.h"
#include "Utility/TextKit/Numbers.h"
#include "Utility/TextKit/TimeZoneData.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::size_t kLongestText = 128;

constexpr std::string_view kYear = kDateUnits[0].view(), kMonth = kDateUnits[1].view(), kDay = kDateUnits[2].view(),
                           kHour = kDateUnits[3].view(), kMinute = kDateUnits[4].view(), kSecond = kDateUnits[5].view();

// What is said in front of an hour. The hours from `first` to `last` are on the clock of twelve hours, and `added` makes
// them those of the day; twelve itself is `twelve`. From noon on, hours after twelve may be meant as they are.
struct PartOfDay {
    std::string_view name;
    int first, last, added, twelve;
    bool takes_late_hours;
};
constexpr PartOfDay kPartsOfDay[] = {
    {"凌晨", 0, 11, 0, 0, false},  {"清晨", 0, 11, 0, 0, false},  {"早晨", 0, 11, 0, 0, false},
    {"早上", 0, 11, 0, 0, false},  {"上午", 0, 11, 0, 0, false},  {"中午", 1, 2, 12, 12, false},
    {"下午", 1, 11, 12, 12, true}, {"傍晚", 1, 11, 12, 12, true}, {"晚上", 5, 11, 12, 24, true},
    {"夜里", 5, 11, 12, 24, true}, {"夜裡", 5, 11, 12, 24, true},
};

constexpr std::string_view kMonths[] = {"january", "february", "march",     "april",   "may",      "june",
                                        "july",    "august",   "september", "october", "november", "december"};
constexpr std::string_view kWeekdays[] = {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};

constexpr int DaysInMonth(int month, int year) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// Place of the name that `word` is or shortens to three letters or more, -1 for none.
template <std::size_t N>
int FindName(const std::string_view (&names)[N], std::string_view word) {
    for (std::size_t i = 0; i < N; ++i)
        if (word.size() >= 3 && names[i].compare(0, word.size(), word) == 0) return static_cast<int>(i);
    return -1;
}

// Reads a date from left to right, folded to narrow forms, small letters and single blanks. Every Read… either steps over
// what it reads or leaves everything as it was.
class DateReader {
public:
    explicit DateReader(std::string_view text) : rest_(text) {}

    std::optional<DateFields> Read() {
        if (ReadNumericDate() || ReadEnglishDate() || ReadChineseDate()) SkipWeekday();
        if (!rest_.empty() && !ReadTime()) return std::nullopt;
        if (!rest_.empty() || !IsInRange()) return std::nullopt;
        return fields_;
    }

private:
    bool Skip(std::string_view wanted) {
        if (rest_.compare(0, wanted.size(), wanted) != 0) return false;
        rest_.remove_prefix(wanted.size());
        return true;
    }
    bool SkipAny(std::initializer_list<std::string_view> wanted) {
        for (const std::string_view candidate : wanted)
            if (Skip(candidate)) return true;
        return false;
    }
    void SkipBlank() { Skip(" "); }

    // Puts everything back where it was.
    bool Return(const DateReader& before) {
        *this = before;
        return false;
    }

    std::size_t DigitsAhead() const {
        std::size_t count = 0;
        while (count < rest_.size() && IsAsciiDigit(ToByte(rest_[count]))) ++count;
        return count;
    }
    // `count` ASCII digits, which stand there.
    int TakeDigits(std::size_t count) {
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) value = value * 10 + (rest_[i] - '0');
        rest_.remove_prefix(count);
        return value;
    }
    // One or two ASCII digits.
    bool ReadShort(std::optional<int>& field) {
        const std::size_t digits = DigitsAhead();
        if (digits == 0 || digits > 2) return false;
        field = TakeDigits(digits);
        return true;
    }

    std::string_view TakeWord() {
        std::size_t length = 0;
        while (length < rest_.size() && IsAsciiLetter(ToByte(rest_[length]))) ++length;
        const std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return word;
    }

    // A number in Arabic or Chinese numerals, up to 9999; `digits` is how many it has, 0 if it is written with units.
    bool ReadNumeral(int& value, std::size_t& digits) {
        std::size_t length = 0;
        bool has_units = false;
        digits = 0;
        for (const Character& character : Characters(rest_)) {
            const char32_t c = character.code_point;
            const int unit = kIndexOf<kUnitText>.Find(c);
            const bool is_unit = (unit >= 0 && kUnitPowers[unit] < 4) || kIndexOf<kTensText>.Contains(c);
            if (!is_unit && !kIndexOf<kHanDigitText>.Contains(c) && !kIndexOf<kNarrowDigitText>.Contains(c)) break;
            has_units = has_units || is_unit;
            length += character.bytes.size();
            ++digits;
        }
        const std::optional<Number> number = ParseNumber(rest_.substr(0, length));
        if (!number || !number->IsInteger() || number->numerator > 9999) return false;
        value = static_cast<int>(number->numerator);
        if (has_units) digits = 0;
        rest_.remove_prefix(length);
        return true;
    }

    // A number and one of the units.
    bool ReadField(std::initializer_list<std::string_view> units, std::optional<int>& field) {
        const DateReader before = *this;
        int value = 0;
        std::size_t digits = 0;
        SkipBlank();
        if (!ReadNumeral(value, digits)) return Return(before);
        SkipBlank();
        if (!SkipAny(units)) return Return(before);
        field = value;
        return true;
    }

    bool ReadChineseYear() {
        const DateReader before = *this;
        int year = 0;
        std::size_t digits = 0;
        Skip("公元");
        if (!ReadNumeral(year, digits)) return Return(before);
        SkipBlank();
        if (!Skip(kYear)) return Return(before);
        // 98年 is 1998; 二十年 and 5年 are no years.
        if (year < 100 && digits < 3) {
            if (digits != 2) return Return(before);
            year += year < 69 ? 2000 : 1900;
        }
        fields_.year = year;
        return true;
    }

    bool ReadChineseDate() {
        const bool has_year = ReadChineseYear();
        SkipBlank();
        const bool has_month = SkipAny({"元月"}) ? (fields_.month = 1, true) : ReadField({kMonth}, fields_.month);
        const bool has_day = (has_month || !has_year) && ReadField({kDay, "号", "號"}, fields_.day);
        return has_year || has_month || has_day;
    }

    // 2026-11-23, 11/23/2026, 20261123
    bool ReadNumericDate() {
        const DateReader before = *this;
        const std::size_t digits = DigitsAhead();
        if (digits == 8 || digits == 12 || digits == 14) {
            fields_.year = TakeDigits(4);
            fields_.month = TakeDigits(2);
            fields_.day = TakeDigits(2);
            return true;
        }
        if (digits == 4) {
            fields_.year = TakeDigits(4);
            if (rest_.empty()) return true;
            const std::string_view separator = rest_.substr(0, 1);
            if (separator != "-" && separator != "/" && separator != ".") return Return(before);
            if (!Skip(separator) || !ReadShort(fields_.month)) return Return(before);
            return rest_.empty() || (Skip(separator) && ReadShort(fields_.day)) || Return(before);
        }
        if (ReadShort(fields_.month) && Skip("/") && ReadShort(fields_.day) && Skip("/") && DigitsAhead() == 4) {
            fields_.year = TakeDigits(4);
            return true;
        }
        return Return(before);
    }

    // 23 November 2026, Nov 23, 2026
    bool ReadEnglishDate() {
        const DateReader before = *this;
        if (FindName(kWeekdays, TakeWord()) < 0) *this = before;
        SkipAny({",", "."});
        SkipBlank();
        const bool day_first = ReadShort(fields_.day);
        SkipBlank();
        const int month = FindName(kMonths, TakeWord());
        if (month < 0) return Return(before);
        fields_.month = month + 1;
        Skip(".");
        SkipBlank();
        if (!day_first && !ReadShort(fields_.day)) return Return(before);
        Skip(",");
        SkipBlank();
        if (DigitsAhead() != 4) return Return(before);
        fields_.year = TakeDigits(4);
        return true;
    }

    void SkipWeekday() {
        const DateReader before = *this;
        SkipBlank();
        const bool in_brackets = Skip("(");
        if (!SkipAny({"星期", "周", "週", "礼拜", "禮拜"}) ||
            !SkipAny({"一", "二", "三", "四", "五", "六", "日", "天"}) || (in_brackets && !Skip(")")))
            Return(before);
    }

    // The time of day in front of the end.
    bool ReadTime() {
        const bool has_date = fields_.year || fields_.month || fields_.day;
        const bool marked = SkipAny({"t", "_"});
        if (!marked) Skip(",");
        SkipBlank();
        if (has_date && DigitsAhead() >= 4) return ReadCompactClock() && ReadOffset();
        const PartOfDay* const part = ReadPartOfDay();
        SkipBlank();
        if (ReadClock()) {
            if (part != nullptr) return ApplyPartOfDay(*part);
            return ReadHalfOfDay() && ReadOffset();
        }
        return ReadChineseClock() && (part == nullptr || ApplyPartOfDay(*part));
    }

    // hhmm, hhmmss
    bool ReadCompactClock() {
        const std::size_t digits = DigitsAhead();
        if (digits != 4 && digits != 6) return false;
        fields_.hour = TakeDigits(2);
        fields_.minute = TakeDigits(2);
        if (digits == 6) fields_.second = TakeDigits(2);
        return true;
    }

    // h:mm, hh:mm:ss.ff
    bool ReadClock() {
        const DateReader before = *this;
        if (!ReadShort(fields_.hour) || !Skip(":") || DigitsAhead() > 2 || !ReadShort(fields_.minute))
            return Return(before);
        if (!Skip(":")) return true;
        if (!ReadShort(fields_.second)) return Return(before);
        if (SkipAny({".", ","})) {
            if (DigitsAhead() == 0) return Return(before);
            rest_.remove_prefix(DigitsAhead());
        }
        return true;
    }

    // 8时5分9秒, 三点半, 3点一刻, 十点整
    bool ReadChineseClock() {
        if (!ReadField({kHour, "時", "点钟", "點鐘", "点", "點"}, fields_.hour)) return false;
        SkipBlank();
        if (SkipAny({"整"})) return true;
        if (Skip("半")) {
            fields_.minute = 30;
        } else if (SkipAny({"一刻", "1刻"})) {
            fields_.minute = 15;
        } else if (SkipAny({"三刻", "3刻"})) {
            fields_.minute = 45;
        } else if (ReadField({"分钟", kMinute}, fields_.minute)) {
            ReadField({"秒钟", kSecond}, fields_.second);
        } else if (!rest_.empty()) {
            int minute = 0;
            std::size_t digits = 0;
            if (!ReadNumeral(minute, digits)) return false;
            fields_.minute = minute;
        }
        return true;
    }

    const PartOfDay* ReadPartOfDay() {
        for (const PartOfDay& part : kPartsOfDay)
            if (Skip(part.name)) return &part;
        return nullptr;
    }
    bool ApplyPartOfDay(const PartOfDay& part) {
        int& hour = *fields_.hour;
        if (part.takes_late_hours && hour > 12 && hour < 24) return true;
        if (part.name == "中午" && hour == 11) return true;
        if (hour != 12 && (hour < part.first || hour > part.last)) return false;
        hour = hour == 12 ? part.twelve : hour + part.added;
        return true;
    }

    // "am" or "pm"; true also if neither is there.
    bool ReadHalfOfDay() {
        const DateReader before = *this;
        SkipBlank();
        const bool afternoon = SkipAny({"pm", "p.m."});
        if (!afternoon && !SkipAny({"am", "a.m."})) {
            Return(before);
            return true;
        }
        int& hour = *fields_.hour;
        if (hour < 1 || hour > 12) return false;
        hour = hour % 12 + (afternoon ? 12 : 0);
        return true;
    }

    // True also if there is none.
    bool ReadOffset() {
        SkipBlank();
        if (rest_.empty()) return true;
        const bool utc = SkipAny({"z", "utc", "gmt"});
        if (utc) fields_.offset_seconds = 0;
        if (rest_.empty() || (rest_[0] != '+' && rest_[0] != '-')) return utc;
        const int sign = rest_[0] == '-' ? -1 : 1;
        rest_.remove_prefix(1);
        const std::size_t digits = DigitsAhead();
        if (digits == 0 || digits == 3 || digits > 4) return false;
        const int hours = TakeDigits(digits <= 2 ? digits : 2);
        if (digits <= 2 && Skip(":") && DigitsAhead() != 2) return false;
        const int minutes = DigitsAhead() == 2 ? TakeDigits(2) : 0;
        if (hours > 23 || minutes > 59) return false;
        fields_.offset_seconds = sign * (hours * 3600 + minutes * 60);
        return true;
    }

    bool IsInRange() const {
        const auto is_in = [](const std::optional<int>& field, int first, int last) {
            return !field || (*field >= first && *field <= last);
        };
        constexpr int kSomeLeapYear = 2000;
        if (!is_in(fields_.year, 1, 9999) || !is_in(fields_.month, 1, 12) || !is_in(fields_.minute, 0, 59) ||
            !is_in(fields_.second, 0, 60))
            return false;
        const int days = fields_.month ? DaysInMonth(*fields_.month, fields_.year.value_or(kSomeLeapYear)) : 31;
        if (!is_in(fields_.day, 1, days)) return false;
        const bool behind_hour = fields_.minute.value_or(0) > 0 || fields_.second.value_or(0) > 0;
        return is_in(fields_.hour, 0, behind_hour ? 23 : 24);
    }

    std::string_view rest_;
    DateFields fields_;
};

}  // namespace

std::optional<DateFields> ParseDate(std::string_view text) {
    if (text.size() > kLongestText) return std::nullopt;
    FoldOptions options;
    options.blanks = true;
    const std::string folded = Fold(text, options);
    if (folded.empty()) return std::nullopt;
    return DateReader(folded).Read();
}

std::optional<std::time_t> ParseTime(std::string_view text, const TimeZone& zone) {
    const std::optional<DateFields> fields = ParseDate(text);
    if (!fields || !fields->year) return std::nullopt;
    const CivilTime civil = {*fields->year,
                             fields->month.value_or(1),
                             fields->day.value_or(1),
                             fields->hour.value_or(0),
                             fields->minute.value_or(0),
                             fields->second.value_or(0)};
    if (fields->offset_seconds) return TimeZone().ToTime(civil) - *fields->offset_seconds;
    return zone.ToTime(civil);
}

}  // namespace textkit
