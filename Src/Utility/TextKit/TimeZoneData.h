#ifndef UTILITY_TEXTKIT_TIMEZONEDATA_H
#define UTILITY_TEXTKIT_TIMEZONEDATA_H

// A time zone as its file describes it: a list of changes of the offset, and a rule for the time behind the last of
// them.

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Utility/TextKit/Dates.h"

namespace textkit {

// Days from 1970-01-01 to a day, whose month is 1 to 12.
constexpr std::int64_t DaysFromCivil(std::int64_t year, int month, std::int64_t day) {
    // Years that start in March, so that the leap day is the last of its year; in eras of 400 of them.
    year -= month <= 2;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t year_of_era = year - era * 400;
    const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - 719468;
}

constexpr bool IsLeapYear(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// A day of the year and a time of day at which daylight saving starts or ends, as in the variable TZ of POSIX.
struct YearlyChange {
    enum class Kind { kDayWithoutLeapDay, kDayOfYear, kWeekday };
    Kind kind = Kind::kDayOfYear;
    int month = 0, week = 0, day = 0;
    std::int64_t seconds = 7200;  // from midnight

    // Seconds from 1970-01-01, civil.
    std::int64_t In(std::int64_t year) const;
};

struct YearlyRule {
    std::int64_t standard_offset = 0;
    bool has_daylight_saving = false;
    std::int64_t daylight_offset = 0;
    YearlyChange start, end;

    // "CET-1CEST,M3.5.0,M10.5.0/3"
    static std::optional<YearlyRule> Parse(std::string_view text);
};

struct ZoneChange {
    std::int64_t time;
    std::int64_t offset_before, offset_after;
};

struct TimeZone::Data {
    std::int64_t first_offset = 0;
    std::vector<ZoneChange> changes;  // ascending
    std::optional<YearlyRule> rule;

    static std::optional<Data> Parse(std::string_view tzif);

    // The offset at a time value; or, if `is_civil`, for the civil time that is `seconds` behind 1970-01-01.
    std::int64_t OffsetAt(std::int64_t seconds, bool is_civil) const;

private:
    std::optional<ZoneChange> LastChange(std::int64_t seconds, bool is_civil) const;
};

}  // namespace textkit

#endif
