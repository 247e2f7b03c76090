#ifndef UTILITY_TEXTKIT_DATES_H
#define UTILITY_TEXTKIT_DATES_H

/** @file
 * Dates and times of day as text, and what moment they are in a time zone. The Gregorian calendar throughout.
 *
 * Neither the variable TZ nor any state of the C library is read or written; everything is safe from any thread. */

#include <ctime>
#include <memory>
#include <optional>
#include <string_view>

#include "../UtilityExport.h"

namespace textkit {

/** A moment as calendar and clock show it somewhere. */
struct CivilTime {
    int year = 1970; /**< of the Gregorian calendar; 0 is the year before 1 */
    int month = 1;   /**< 1 to 12 */
    int day = 1;     /**< 1 to 31 */
    int hour = 0;    /**< 0 to 23 */
    int minute = 0;  /**< 0 to 59 */
    int second = 0;  /**< 0 to 59 */
};

/** A time zone: which offset from UTC holds when. Immutable; copies are cheap and share their data. */
class TimeZone {
public:
    /** UTC. */
    UTILITY_API TimeZone() noexcept;
    /** Copies share their data; there is no moving, which would leave a zone without. */
    TimeZone(const TimeZone&) = default;
    /** As the constructor. */
    TimeZone& operator=(const TimeZone&) = default;

    /** The zone of this name in the system's time-zone database (/usr/share/zoneinfo and the like); none if there is no
     * such file or it is damaged. "UTC" needs no file. Names are made of letters, digits, "_+-" and single slashes: no
     * name leads out of the database. Reads one small file at each call.
     *
     *     textkit::TimeZone::Named("Asia/Shanghai").has_value();     // true where the database is installed
     *     textkit::TimeZone::Named("../../etc/passwd").has_value();  // false */
    UTILITY_API static std::optional<TimeZone> Named(std::string_view name);
    /** The zone that the machine is set to, by /etc/localtime; UTC where that cannot be read. */
    UTILITY_API static TimeZone Local();
    /** The zone that the bytes of a TZif file (RFC 8536) describe; none if they are damaged, or count leap seconds. */
    UTILITY_API static std::optional<TimeZone> FromData(std::string_view tzif);

    /** The time value of a civil time. Where the clock is set forward, the times that it leaves out count with the
     * offset in front of the change (half past two becomes half past three); where it is set back, those that come
     * twice are the first of the two. Fields beyond their range are carried over, as mktime does (month 13, day 0, hour
     * 24).
     *
     *     textkit::TimeZone().ToTime({2001, 9, 9, 1, 46, 40});  // 1000000000 */
    UTILITY_API std::time_t ToTime(const CivilTime& civil) const noexcept;
    /** The civil time at a time value. Years beyond the range of int are cut to it. ToTime is the way back, but for the
     * second of two equal civil times.
     *
     *     textkit::TimeZone().ToCivil(1000000000).year;  // 2001 */
    UTILITY_API CivilTime ToCivil(std::time_t time) const noexcept;

    struct Data;  // the library's own

private:
    explicit TimeZone(std::shared_ptr<const Data> data) noexcept;
    std::shared_ptr<const Data> data_;
};

/** What a text says about date and time of day: each field only if it is there, all within their ranges. */
struct DateFields {
    std::optional<int> year;           /**< 1 to 9999 */
    std::optional<int> month;          /**< 1 to 12 */
    std::optional<int> day;            /**< 1 to 31, as the month and year allow */
    std::optional<int> hour;           /**< 0 to 24; 24 is the midnight at the end of the day */
    std::optional<int> minute;         /**< 0 to 59 */
    std::optional<int> second;         /**< 0 to 60; 60 for a leap second. Fractions are cut off. */
    std::optional<int> offset_seconds; /**< east of UTC, if the text says so */
};

/** Reads `text`, which is a date, a time of day, or a date and a time of day, of at most 128 bytes. Full-width forms
 * and blanks do not matter, a day of the week is passed over.
 *
 * - 2026年11月23日, 二〇二六年十一月, 98年 (1969 to 2068), 11月23号, 23日
 * - 2026-11-23, 2026/11/23, 2026.11.23, 2026-11, 2026, 20261123
 * - 11/23/2026: the month comes first; 23/11/2026 is no date
 * - 23 November 2026, Nov 23, 2026, Mon, 23 Nov 2026
 * - behind a blank, "T", "_" or 日: 08:05, 8:05:09, 08:05:09.25, 080509; 8时5分9秒, 下午3点半, 三点一刻, 8:05 PM
 * - behind a clock time: Z, UTC, GMT, +08:00, +0800, +8 and both together
 *
 * 凌晨 to 上午 are 0 to 12 o'clock (12 is midnight), 中午 11 to 2, 下午 and 傍晚 the 12 hours from noon on; 晚上 and 夜里 are 5
 * to 12 in the evening, of 1 to 4 nobody knows the day. No value for anything else, nor for a 30th of February.
 *
 *     const std::optional<textkit::DateFields> fields = textkit::ParseDate("十一月二十三日下午3点半");
 *     *fields->month;                // 11
 *     *fields->hour;                 // 15
 *     fields->year.has_value();      // false
 *     textkit::ParseDate("2026年");  // year 2026 and no month */
UTILITY_API std::optional<DateFields> ParseDate(std::string_view text);

/** The time value of a date as ParseDate reads it; in `zone`, unless the text states an offset. The year must be there;
 * missing months and days are the first, missing times of day midnight.
 *
 *     textkit::ParseTime("2026-11-23T08:05:09+08:00");  // 1795392309
 *     textkit::ParseTime("2026年11月23日");             // 1795392000: in UTC
 *     textkit::ParseTime("2026年11月23日", *textkit::TimeZone::Named("Asia/Shanghai"));  // 1795363200 */
UTILITY_API std::optional<std::time_t> ParseTime(std::string_view text, const TimeZone& zone = {});

}  // namespace textkit

#endif
