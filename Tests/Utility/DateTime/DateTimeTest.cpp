#include "Support/LogSupport.h"
#include "Utility.h"

namespace {

using test_support::SetTimeZone;

class DateTime : public test_support::LoggedTest {
protected:
    ~DateTime() override { SetTimeZone("UTC0"); }
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
        SetTimeZone(zone);
        for (long day = Seconds(1999, 1, 1); day < Seconds(2101, 1, 1); day += 86400) {
            const std::time_t time = day + 43200 + day / 86400 % 12 * 3599;  // not in an hour that comes twice
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
    // clang-format off
    const std::tuple<const char*, long, const char*, const char*, const char*> rows[] = {
        {"UTC0", time, "2014/03/05 08:09:10", "2014年3月5日 08:09:10", "2014-03-05T08:09"},
        {"CST-8", time, "2014/03/05 16:09:10", "2014年3月5日 16:09:10", "2014-03-05T16:09"},
        {"CST-8", time + 28250, "2014/03/06 00:00:00", "2014年3月6日", "2014-03-06T00:00"},
        {kNewYork, Seconds(2038, 7, 1, 3), "2038/06/30 23:00:00", "2038年6月30日 23:00:00", "2038-06-30T23:00"},
        {kNewYork, 2147483648, "2038/01/18 22:14:08", "2038年1月18日 22:14:08", "2038-01-18T22:14"},
        {"UTC0", -1, "1969/12/31 23:59:59", "1969年12月31日 23:59:59", "1969-12-31T23:59"},
        {"UTC0", 1, "1970/01/01 00:00:01", "1970年1月1日 00:00:01", "1970-01-01T00:00"},
        {"UTC0", Seconds(7, 1, 2, 3, 4, 5), "0007/01/02 03:04:05", "0007年1月2日 03:04:05", "0007-01-02T03:04"},
        {"UTC0", Seconds(395, 10, 20) - 146097 * 86400l, "-005/10/20 00:00:00", "-005年10月20日", "-005-10-20T00:00"},
        {"UTC0", 0, "", "", "1970-01-01T00:00"}, {"UTC0", LONG_MAX, "NULL", "NULL", ""}, {"UTC0", LONG_MIN, "NULL", "NULL", ""},
        {"UTC0", Seconds(12345, 12, 31, 1, 2, 3), "12345/12/31 01:02:03", "12345年12月31日 01:02:0", "12345-12-31T01:02"}};
    // clang-format on
    for (const auto& [zone, seconds, slashes, chinese, iso] : rows) {
        SCOPED_TRACE(testing::Message() << zone << ' ' << seconds);
        SetTimeZone(zone);
        EXPECT_EQ(Text(seconds, false), slashes);
        EXPECT_EQ(Text(seconds, true), chinese);
        EXPECT_EQ(formatDateTime(seconds, true), iso);
    }
}

TEST_F(DateTime, ReadsWhatPeopleWrite) {
    const long day = Seconds(2014, 3, 5);
    // clang-format off
    const std::pair<std::string, long> rows[] = {  // in a zone without daylight saving time; -1 for an error
        {"2014-03-05 08:09:10", day + 29350}, {"2014/3/5_8:9", day + 29340}, {" +2014- 3-5x 8: 9:10", day + 29350},
        {"2014-03-05T08:09", day}, {"2014-3-5 8 9", day + 28800}, {"2014-3-5_1 2:3", day + 7380},
        {"2014-3-5 7_8:9", day + 25740}, {"2014-3-/5", Seconds(2014, 2, 28)}, {"2014-13-0", Seconds(2014, 12, 31)},
        {"2014/2/31 25:61:61", Seconds(2014, 3, 4, 2, 2, 1)}, {"1969-12-31 23:59:58", -2}, {"1900/1/1", Seconds(1900, 1, 1)},
        {"2014", -1}, {"2014-03", -1}, {"2014-03/05", -1}, {"text", -1}, {"3月5日", -1}, {"1970年1月1日5时45分", -1},
        {"二零一四年三月", -1}, {"2014年3月5日10时20分", day + 37200}, {"2014年3月5日08时09分10秒", day + 29350},
        {"2014年", Seconds(2013, 11, 30)}, {"2014年5日", Seconds(2013, 12, 5)}, {"2014年3日4月", Seconds(2014, 2, 28)},
        {"2014年x3月5日", Seconds(2013, 12, 5)}};
    // clang-format on
    std::string errors;
    SetTimeZone("<+0545>-5:45");
    for (const auto& [text, seconds] : rows) {
        EXPECT_EQ(str2time(text.c_str()), seconds == -1 ? -1 : seconds - 20700) << text;
        if (seconds == -1) errors += "[]strDateStr[" + text + "] err \n\n";
    }
    EXPECT_TRUE(str2time("") == 0 && str2time(nullptr) == 0);
    EXPECT_EQ(cstr2time("3月5日"), Seconds(0, 3, 5) - 20700);
    EXPECT_EQ(Logged(".err"), errors);
    SetTimeZone(kNewYork);
    EXPECT_EQ(str2time("2050-7-1 12:00"), Seconds(2050, 7, 1, 16));
    EXPECT_EQ(str2time("2050年1月1日12时"), Seconds(2050, 1, 1, 17));
    for (const char* const tail : {"年1月1日", "月1日", "日1时", "时", "分", "秒"}) {
        const auto read = [tail](std::string number) { return cstr2time((number + tail).c_str()); };
        EXPECT_EQ(read("99999999999999999999"), read("-1")) << tail;
        EXPECT_EQ(read("4294967299"), read("3")) << tail;
        read("-2147483648");  // no overflow on the way
    }
    const std::time_t twice = str2time("2014-11-02 01:30:00");  // before and after the clock is put back
    EXPECT_TRUE(twice == Seconds(2014, 11, 2, 5, 30) || twice == Seconds(2014, 11, 2, 6, 30));
}

TEST_F(DateTime, TellsTheCurrentTime) {
    for (const char* const zone : {"XST-14", "XST12"}) {  // never the same day
        SetTimeZone(zone);
        char digits[15];
        std::string before, after;
        do {  // until no second passed meanwhile
            before = getDateTime(false);
            TimeValue(digits);
            after = getDateTime(false);
        } while (before != after);
        const long age = std::time(nullptr) - str2time(before.c_str());
        EXPECT_TRUE(age >= 0 && age < 5) << age;
        EXPECT_EQ(getDateTime(true).substr(0, 11), before.substr(0, 10) + 'T');
        for (const std::size_t pos : {16u, 13u, 10u, 7u, 4u}) before.erase(pos, 1);
        EXPECT_EQ(digits, before);
        EXPECT_EQ(getCurDateString(), before.substr(0, 8));
        EXPECT_TRUE(std::to_string(getCurDate()) == getCurDateString() && GetToday() == getCurDate());
    }
}

}  // namespace
