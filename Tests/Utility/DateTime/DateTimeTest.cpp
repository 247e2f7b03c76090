#include <climits>
#include <cstdint>

#include "Support/TestSupport.h"
#include "Utility/DateTime/DateFormatting.h"
#include "Utility/DateTime/DateParsing.h"
#include "Utility/Global.h"
#include "Utility/Runtime/LogWriter.h"

namespace {

void SetZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

class DateTime : public testing::Test {
protected:
    DateTime() { g_sLogPath = folder_.path(); }
    ~DateTime() override { SetZone("UTC0"); }

    // What the error log holds, without stamps; it is emptied.
    std::string TakeErrors() const {
        std::string errors;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            errors += test_support::ReadFileBytes(entry.path()).substr(22);
            std::filesystem::remove(entry.path());
        }
        return errors;
    }

    const test_support::TempFolder folder_;
    const test_support::Restore<std::string> path_{g_sLogPath};
};

// Seconds of a date in the Gregorian calendar, counted day by day from 1 March of the year 0.
long Seconds(long year, long month, long day, long hour = 0, long minute = 0, long second = 0) {
    const long years = month > 2 ? year : year - 1;
    const long days =
        years * 365 + years / 4 - years / 100 + years / 400 + (153 * ((month + 9) % 12) + 2) / 5 + day - 1;
    return (days - 719468) * 86400 + hour * 3600 + minute * 60 + second;
}

std::string Text(std::time_t time, bool chinese) {
    char buffer[27];
    EXPECT_EQ(time2str(time, buffer, chinese), buffer);
    return buffer;
}

constexpr char kNewYork[] = "EST5EDT,M3.2.0,M11.1.0";

TEST_F(DateTime, EveryDayOfALeapCenturyGoesThereAndBack) {
    for (const char* const zone : {"UTC0", "CST-8", "<+0545>-5:45", kNewYork}) {
        SetZone(zone);
        for (long day = Seconds(1999, 1, 1); day < Seconds(2101, 1, 1); day += 86400) {
            const std::time_t time =
                day + 12 * 3600 + day / 86400 % 12 * 3599;  // not in an hour that comes twice
            ASSERT_EQ(str2time(Text(time, false).c_str()), time) << zone;
            ASSERT_EQ(str2time(formatDateTime(time, false).c_str()), time) << zone;
            // The Chinese form has no unit behind the time of day, which is therefore not read.
            const std::time_t midnight = str2time(formatDateTime(time, true).c_str());
            ASSERT_EQ(str2time(Text(time, true).c_str()), midnight) << zone;
            ASSERT_EQ(Text(midnight, true).find(':'), std::string::npos) << zone;
        }
    }
}

TEST_F(DateTime, WritesLocalTime) {
    const long time = Seconds(2014, 3, 5, 8, 9, 10);
    const struct {
        const char* zone;
        long time;
        const char *slashes, *chinese, *iso;
    } kRows[] = {
        {"UTC0", time, "2014/03/05 08:09:10", "2014年3月5日 08:09:10", "2014-03-05T08:09"},
        {"CST-8", time, "2014/03/05 16:09:10", "2014年3月5日 16:09:10", "2014-03-05T16:09"},
        {"CST-8", time + 28250, "2014/03/06 00:00:00", "2014年3月6日", "2014-03-06T00:00"},
        {kNewYork, Seconds(2038, 7, 1, 3), "2038/06/30 23:00:00", "2038年6月30日 23:00:00",
         "2038-06-30T23:00"},
        {kNewYork, Seconds(2038, 1, 19, 3, 14, 8), "2038/01/18 22:14:08", "2038年1月18日 22:14:08",
         "2038-01-18T22:14"},
        {"UTC0", -1, "1969/12/31 23:59:59", "1969年12月31日 23:59:59", "1969-12-31T23:59"},
        {"UTC0", 1, "1970/01/01 00:00:01", "1970年1月1日 00:00:01", "1970-01-01T00:00"},
        {"UTC0", 0, "", "", "1970-01-01T00:00"},
        {"UTC0", Seconds(12345, 12, 31, 1, 2, 3), "12345/12/31 01:02:03", "12345年12月31日 01:02:0",
         "12345-12-31T01:02"},
        {"UTC0", LONG_MAX, "NULL", "NULL", ""},
        {"UTC0", LONG_MIN, "NULL", "NULL", ""},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.zone << ' ' << row.time);
        SetZone(row.zone);
        EXPECT_EQ(Text(row.time, false), row.slashes);
        EXPECT_EQ(Text(row.time, true), row.chinese);
        EXPECT_EQ(formatDateTime(row.time, true), row.iso);
    }
}

TEST_F(DateTime, ReadsWhatPeopleWrite) {
    const long day = Seconds(2014, 3, 5);
    const struct {
        const char* text;
        long time;  // in a zone without daylight saving time; -1 for an error
    } kRows[] = {
        {"2014-03-05 08:09:10", day + 29350},
        {"2014/3/5_8:9", day + 29340},
        {" +2014- 3-5x 8: 9:10", day + 29350},
        {"2014-03-05T08:09", day},
        {"2014-3-5 8 9", day + 28800},
        {"2014-3-5_1 2:3", day + 7380},
        {"2014-3-5 7_8:9", day + 25740},
        {"2014-3-/5", Seconds(2014, 2, 28)},
        {"2014-13-0", Seconds(2014, 12, 31)},
        {"2014/2/31 25:61:61", Seconds(2014, 3, 4, 2, 2, 1)},
        {"1969-12-31 23:59:58", -2},
        {"1900/1/1", Seconds(1900, 1, 1)},
        {"2014", -1},
        {"2014-03", -1},
        {"2014-03/05", -1},
        {"text", -1},
        {"2014年3月5日10时20分", day + 37200},
        {"2014年3月5日08时09分10秒", day + 29350},
        {"2014年", Seconds(2013, 11, 30)},
        {"2014年5日", Seconds(2013, 12, 5)},
        {"2014年3日4月", Seconds(2014, 2, 28)},
        {"2014年x3月5日", Seconds(2013, 12, 5)},
        {"3月5日", -1},
        {"1970年1月1日5时45分", -1},
        {"二零一四年三月", -1},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.text);
        SetZone("<+0545>-5:45");
        EXPECT_EQ(str2time(row.text), row.time == -1 ? -1 : row.time - 20700);
        EXPECT_EQ(TakeErrors(), row.time == -1 ? "strDateStr[" + std::string(row.text) + "] err \n\n" : "");
    }
    EXPECT_EQ(str2time(""), 0);
    EXPECT_EQ(str2time(nullptr), 0);
    EXPECT_EQ(cstr2time("3月5日"), Seconds(0, 3, 5) - 20700);
    EXPECT_EQ(TakeErrors(), "");
    SetZone(kNewYork);
    EXPECT_EQ(str2time("2050-7-1 12:00"), Seconds(2050, 7, 1, 16));
    EXPECT_EQ(str2time("2050年1月1日12时"), Seconds(2050, 1, 1, 17));
    for (const char* const tail : {"年1月1日", "月1日", "日1时", "时", "分", "秒"}) {
        const std::string huge = "99999999999999999999", cut = "4294967299";
        EXPECT_EQ(cstr2time((huge + tail).c_str()), cstr2time(("-1" + std::string(tail)).c_str())) << tail;
        EXPECT_EQ(cstr2time((cut + tail).c_str()), cstr2time(("3" + std::string(tail)).c_str())) << tail;
        cstr2time(("-2147483648" + std::string(tail)).c_str());  // no overflow on the way
    }
    const std::time_t twice = str2time("2014-11-02 01:30:00");  // before and after the clock is put back
    EXPECT_TRUE(twice == Seconds(2014, 11, 2, 5, 30) || twice == Seconds(2014, 11, 2, 6, 30));
}

TEST_F(DateTime, TellsTheCurrentTime) {
    for (const char* const zone : {"XST-14", "XST12"}) {  // never the same day
        SetZone(zone);
        char digits[15];
        std::string before, after;
        do {  // until no second passed meanwhile
            before = getDateTime(false);
            TimeValue(digits);
            after = getDateTime(false);
        } while (before != after);
        EXPECT_NEAR(static_cast<double>(str2time(before.c_str())), static_cast<double>(std::time(nullptr)),
                    5);
        EXPECT_EQ(getDateTime(true).substr(0, 11), before.substr(0, 10) + 'T');
        for (const std::size_t pos : {16u, 13u, 10u, 7u, 4u}) before.erase(pos, 1);
        EXPECT_EQ(digits, before);
        EXPECT_EQ(getCurDateString(), before.substr(0, 8));
        EXPECT_EQ(std::to_string(getCurDate()), before.substr(0, 8));
        EXPECT_EQ(GetToday(), getCurDate());
    }
}

}  // namespace
