#ifndef UTILITY_DATETIME_DATEFORMATTING_H
#define UTILITY_DATETIME_DATEFORMATTING_H

/** @file
 * Writing time values, and the current time, as text and numbers.
 *
 * Time values are seconds since the epoch and always shown in the local time zone of the process. A host that
 * changes the environment variable TZ calls tzset for it to count (parsing a date does so, too). All functions may
 * be called from any thread. */

#include <ctime>
#include <string>

#include "../UtilityExport.h"

/** Writes `time` to `buffer` and returns `buffer`, which needs 27 bytes and receives a NUL-terminated text:
 *
 *     2014/03/05 08:09:10       // chinese false
 *     2014年3月5日 08:09:10     // chinese true: UTF-8, month and day without leading zeros
 *     2014年3月5日              // chinese true, at midnight to the second
 *
 * **The time 0 gives an empty text**, and one that cannot be broken down (its year does not fit an int) "NULL". Never
 * more than 27 bytes are written: the Chinese form with a time of day loses what goes beyond at its end where the year
 * has five digits or more, or a sign. */
UTILITY_API char* time2str(const std::time_t& time, char* buffer, bool chinese);

/** `time` as "2014-03-05T08:09" (no seconds) if `short_form`, else as "2014-03-05 08:09:10"; empty if it cannot be
 * broken down. Every time value is written, 0 as well, with as many digits of the year as it has. */
UTILITY_API std::string formatDateTime(long time, bool short_form);

/** `formatDateTime` of the current time. */
UTILITY_API std::string getDateTime(bool short_form);

/** Today's date as eight digits, such as "20140305". */
UTILITY_API std::string getCurDateString();

/** Today's date as a number: year × 10000 + month × 100 + day, such as 20140305. */
UTILITY_API int getCurDate();

/** The same as `getCurDate()`. */
UTILITY_API int GetToday();

/** Writes the current time as fourteen digits and a NUL, such as "20140305080910", to `buffer`, which needs 15
 * bytes. */
UTILITY_API void TimeValue(char* buffer);

#endif
