#ifndef UTILITY_DATETIME_DATEPARSING_H
#define UTILITY_DATETIME_DATEPARSING_H

/** @file
 * Reading dates from text, in digits with separators or with Chinese unit characters in UTF-8.
 *
 * The results are seconds since the epoch for a date in the local time zone of the process, as mktime finds them: it
 * looks at the environment variable TZ in every call and decides whether daylight saving time is in force. A time of
 * day that occurs twice, when the clock is put back, may come out as either, depending on what the process converted
 * before, in whatever thread.
 *
 * Texts are NUL-terminated. Numbers are read as by `atoi` (leading blanks and a sign are taken, reading stops at the
 * first byte that is no digit, and nothing readable is 0); of one that an int cannot hold the low 32 bits count. Values
 * out of their range carry over, as with mktime: month 13 is January of the next year, day 0 the last day of the month
 * before. All functions may be called from any thread. */

#include <ctime>

#include "../UtilityExport.h"

/** Time of a date like "2014-03-05 08:09:10", "2014/3/5_8:9" or "2014年3月5日10时20分".
 *
 * Year, month and day are separated by "-", or by "/" if the text has no "-"; both separators must be the same. The
 * time of day follows the first blank after the day, or underscore if there is no blank, and its parts are separated
 * by ":". Parts that are missing are 0, **and so is all of it after a "T"**: "2014-03-05T08:09" is midnight. A text
 * with neither separator is read by `cstr2time`.
 *
 * Null and empty texts give 0. -1 is the result, and "strDateStr[TEXT] err \n" goes to the error log, for one separator
 * alone and for what `cstr2time` reads as the epoch or earlier. -1 without that line is a date with separators one
 * second before the epoch, or one whose time cannot be represented; times before the epoch are no error there. */
UTILITY_API std::time_t str2time(const char* text);

/** Time of a date whose numbers stand directly before the characters 年 月 日 时 分 秒 (UTF-8) in this order.
 *
 * Each unit is looked for behind the last one found, and its number is read from that place, the start of the text
 * for the first: what stands between number and unit is passed over, and other text in front of the number makes it
 * 0. Units that are missing are 0, too, which carries over: "2014年" is 30 November 2013, and a text without a year
 * lies in the first century BC. Numbers in Chinese numerals are not read. Never writes to the log; the result is
 * that of mktime, -1 if the time cannot be represented. `text` must not be null. */
UTILITY_API std::time_t cstr2time(const char* text);

#endif
