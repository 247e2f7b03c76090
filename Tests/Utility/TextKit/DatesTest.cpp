#include <TextKit.h>
#include <gtest/gtest.h>

#include "Support/TestSupport.h"

namespace {

using textkit::CivilTime;
using textkit::ParseDate;
using textkit::ParseTime;
using textkit::TimeZone;

std::string Shown(const CivilTime& civil) {
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", civil.year, civil.month, civil.day, civil.hour,
                  civil.minute, civil.second);
    return text;
}

std::string Shown(const std::tm& tm) {
    return Shown(CivilTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec});
}

TEST(DatesTest, ReadWhatIsWritten) {
    // year month day hour minute second offset, "-" for what is not there; "" for no date.
    const char* const rows[][2] = {
        {"2026年11月23日", "2026 11 23 - - - -"},
        {"二〇二六年十一月二十三日", "2026 11 23 - - - -"},
        {"公元２０２６ 年 １ 月", "2026 1 - - - - -"},
        {"两千零二十六年", "2026 - - - - - -"},
        {"98年", "1998 - - - - - -"},
        {"零五年元月", "2005 1 - - - - -"},
        {"618年", "618 - - - - - -"},
        {"十一月廿三号", "- 11 23 - - - -"},
        {"23日 8时", "- - 23 8 - - -"},
        {"2026-11-23 08:05:09", "2026 11 23 8 5 9 -"},
        {"2026/1/3_8:9", "2026 1 3 8 9 - -"},
        {"2026.11.23", "2026 11 23 - - - -"},
        {"2026-11", "2026 11 - - - - -"},
        {"2026", "2026 - - - - - -"},
        {"20261123", "2026 11 23 - - - -"},
        {"20261123080509", "2026 11 23 8 5 9 -"},
        {"20261123T0805Z", "2026 11 23 8 5 - 0"},
        {"11/23/2026", "2026 11 23 - - - -"},
        {"2026-11-23T08:05:09.25+08:00", "2026 11 23 8 5 9 28800"},
        {"2026-11-23t08:05:09-0330", "2026 11 23 8 5 9 -12600"},
        {"2026-11-23 8:05 UTC+8", "2026 11 23 8 5 - 28800"},
        {"2026-12-31T23:59:60Z", "2026 12 31 23 59 60 0"},
        {"2026-11-23 24:00", "2026 11 23 24 0 - -"},
        {"2024-02-29", "2024 2 29 - - - -"},
        {"2月29日", "- 2 29 - - - -"},
        {"Mon, 23 Nov 2026 08:05:09 +0800", "2026 11 23 8 5 9 28800"},
        {"November 23, 2026 8:05 PM", "2026 11 23 20 5 - -"},
        {"12:30 am", "- - - 0 30 - -"},
        {"2026年11月23日（星期一）上午12:30", "2026 11 23 0 30 - -"},
        {"2026年11月23日 8时5分9秒", "2026 11 23 8 5 9 -"},
        {"下午3点半", "- - - 15 30 - -"},
        {"三点一刻", "- - - 3 15 - -"},
        {"三点五十", "- - - 3 50 - -"},
        {"十点钟", "- - - 10 - - -"},
        {"中午12点", "- - - 12 - - -"},
        {"中午一点", "- - - 13 - - -"},
        {"凌晨12点", "- - - 0 - - -"},
        {"晚上12点", "- - - 24 - - -"},
        {"下午15:00", "- - - 15 0 - -"},
        {"今天", ""},
        {"", ""},
        {"5年", ""},
        {"二十年", ""},
        {"23/11/2026", ""},
        {"2026-13-01", ""},
        {"2026-02-29", ""},
        {"4月31日", ""},
        {"2026-11-23x", ""},
        {"2026-11/23", ""},
        {"2026-11-23T", ""},
        {"2026-11-23 25:00", ""},
        {"2026-11-23 24:01", ""},
        {"8:5:", ""},
        {"晚上2点", ""},
        {"上午13点", ""},
        {"13:00 PM", ""},
        {"-5", ""},
        {"0000-01-01", ""},
        {"2026-11-23 08:05 +24:00", ""},
        {"99999999999999999999年", ""},
    };
    for (const auto& [text, expected] : rows) {
        std::string found;
        if (const auto fields = ParseDate(text)) {
            for (const auto& field : {fields->year, fields->month, fields->day, fields->hour, fields->minute,
                                      fields->second, fields->offset_seconds})
                found += (found.empty() ? "" : " ") + (field ? std::to_string(*field) : "-");
        }
        EXPECT_EQ(found, expected) << text;
    }
    EXPECT_FALSE(ParseTime("11月23日"));
    EXPECT_FALSE(ParseDate("2026" + std::string(200, ' ')));
    EXPECT_EQ(ParseTime("2026-12-31 24:00"), ParseTime("2027"));
    EXPECT_EQ(ParseTime("1969-12-31T23:59:59Z"), -1);
}

// Every day, against the C library, in each direction and through text.
TEST(DatesTest, TheCalendarIsTheCLibrarys) {
    const TimeZone utc;
    for (std::time_t time = -70LL * 366 * 86400; time < 230LL * 366 * 86400; time += 86400 + 1) {
        std::tm tm{};
        gmtime_r(&time, &tm);
        const CivilTime civil = utc.ToCivil(time);
        ASSERT_EQ(Shown(civil), Shown(tm));
        ASSERT_EQ(utc.ToTime(civil), time);
        ASSERT_EQ(ParseTime(Shown(civil)), time) << Shown(civil);
    }
    EXPECT_EQ(utc.ToTime({2026, 14, 0, 25, 61, -1}), utc.ToTime({2027, 2, 1, 2, 0, 59}));
    EXPECT_EQ(utc.ToTime({2026, -1, 1, 0, 0, 0}), utc.ToTime({2025, 11, 1, 0, 0, 0}));
    EXPECT_EQ(utc.ToCivil(std::numeric_limits<std::time_t>::max()).year, std::numeric_limits<int>::max());
    EXPECT_EQ(utc.ToCivil(std::numeric_limits<std::time_t>::min()).year, std::numeric_limits<int>::min());
}

class ZonesTest : public testing::TestWithParam<const char*> {
protected:
    ~ZonesTest() override { test_support::SetTimeZone(before_.c_str()); }

private:
    std::string before_ = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "UTC";
};

TEST_P(ZonesTest, AgreeWithTheCLibrary) {
    const std::optional<TimeZone> zone = TimeZone::Named(GetParam());
    if (!zone) GTEST_SKIP() << "no such zone on this machine";
    test_support::SetTimeZone(GetParam());
    int twins = 0;
    for (std::time_t time = -100LL * 366 * 86400; time < 140LL * 366 * 86400; time += 5400 * 29 + 1) {
        std::tm tm{};
        localtime_r(&time, &tm);
        const CivilTime civil = zone->ToCivil(time);
        ASSERT_EQ(Shown(civil), Shown(tm)) << time;
        const std::time_t back = zone->ToTime(civil);
        ASSERT_LE(back, time);
        ASSERT_EQ(Shown(zone->ToCivil(back)), Shown(tm));
        // Both are at most a change of offset apart; what comes once comes back.
        ASSERT_LE(time - back, 86400);
        twins += back != time;
    }
    EXPECT_LT(twins, 200);
}

INSTANTIATE_TEST_SUITE_P(Some, ZonesTest,
                         testing::Values("Asia/Shanghai", "America/New_York", "Europe/Dublin", "Australia/Lord_Howe",
                                         "Africa/Casablanca", "America/Sao_Paulo", "Pacific/Apia", "Asia/Kolkata",
                                         "Antarctica/Troll", "Etc/GMT+12"));

TEST(TimeZoneTest, ClocksSetForwardAndBack) {
    const std::optional<TimeZone> zone = TimeZone::Named("America/New_York");
    if (!zone) GTEST_SKIP() << "no time-zone database on this machine";
    const std::string rows[][2] = {
        {"2005-04-03 ", "2005-10-30 "}, {"2026-03-08 ", "2026-11-01 "}, {"2090-03-12 ", "2090-11-05 "}};
    for (const auto& [spring, autumn] : rows) {
        EXPECT_EQ(ParseTime(spring + "01:59:59", *zone), ParseTime(spring + "01:59:59 -0500"));
        EXPECT_EQ(ParseTime(spring + "02:30", *zone), ParseTime(spring + "03:30 -0400"));
        EXPECT_EQ(ParseTime(spring + "03:00", *zone), ParseTime(spring + "03:00 -0400"));
        EXPECT_EQ(ParseTime(autumn + "01:30", *zone), ParseTime(autumn + "01:30 -0400"));
        EXPECT_EQ(ParseTime(autumn + "02:00", *zone), ParseTime(autumn + "02:00 -0500"));
    }
}

TEST(TimeZoneTest, NamesStayInsideTheDatabase) {
    for (const char* const name :
         {"", "/etc/localtime", "../zoneinfo/UTC", "Asia/../Asia/Shanghai", "Asia//Shanghai", "Asia/", "./UTC", "Asia",
          "tzdata.zi", "zone.tab", "No/Such", "Asia/Shang\xFFhai", "right/UTC"})
        EXPECT_FALSE(TimeZone::Named(name)) << name;
    EXPECT_TRUE(TimeZone::Named("UTC"));
    EXPECT_FALSE(TimeZone::Named(std::string(5000, 'a')));
}

// A file of one change and a rule, as RFC 8536 has it.
std::string ZoneFile(std::string_view time, std::string_view footer) {
    using test_support::Bytes;
    const std::string counts = Bytes("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\2\0\0\0\4");
    const std::string header = "TZif2" + std::string(15, '\0') + counts;
    const std::string types =
        Bytes("\1\0\0\x1C\x20\0\0\0\0\x0E\x10\1\0CET\0");  // change to type 1; types of two hours and one
    return header + std::string(4, '\0') + types + header + std::string(time) + types + "\n" + std::string(footer) +
           "\n";
}

TEST(TimeZoneTest, DamagedFilesAreRefused) {
    const std::string zero(8, '\0');
    const std::string good = ZoneFile(zero, "CET-1CEST,M3.5.0,M10.5.0/3");
    const std::optional<TimeZone> zone = TimeZone::FromData(good);
    ASSERT_TRUE(zone);
    EXPECT_EQ(zone->ToTime({1969, 6, 1, 0, 0, 0}), TimeZone().ToTime({1969, 5, 31, 22, 0, 0}));
    EXPECT_EQ(zone->ToTime({2026, 3, 29, 1, 59, 59}), TimeZone().ToTime({2026, 3, 29, 0, 59, 59}));
    EXPECT_EQ(zone->ToTime({2026, 3, 29, 3, 0, 0}), TimeZone().ToTime({2026, 3, 29, 1, 0, 0}));
    EXPECT_EQ(zone->ToTime({2026, 10, 25, 3, 0, 0}), TimeZone().ToTime({2026, 10, 25, 2, 0, 0}));
    for (const char* const rule : {"", "CET-1", "<+01>-1", "XXX3EDT4,0/0,J365/23", "IST-2IDT,M3.4.4/26,M10.5.0",
                                   "<-02>2<-01>,M3.5.0/-1,M10.5.0/0"})
        EXPECT_TRUE(TimeZone::FromData(ZoneFile(zero, rule))) << rule;
    for (const char* const rule : {"C-1", "CET", "CET-25", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0",
                                   "CET-1CEST,M3.6.0,M10.5.0", "CET-1CEST,M3.5.7,M10.5.0", "CET-1CEST,J0,J365",
                                   "CET-1CEST,366,1", "CET-1CEST,1/168,2", "<+01-1", "CET-1x", "CET-99999999999"})
        EXPECT_FALSE(TimeZone::FromData(ZoneFile(zero, rule))) << rule;
    EXPECT_FALSE(TimeZone::FromData(ZoneFile("\x7F" + std::string(7, '\xFF'), "")));
    for (std::size_t length = 0; length < good.size(); ++length) {
        const std::vector<char> exactly = test_support::Exactly(good.substr(0, length));
        EXPECT_FALSE(TimeZone::FromData({exactly.data(), exactly.size()})) << length;
    }
    // Any byte changed: refused, or a zone whose times can be asked for.
    for (std::size_t pos = 0; pos < good.size(); ++pos) {
        for (const int change : {1, 2, 0x7F, 0x80, 0xFF}) {
            std::string bytes = good;
            bytes[pos] = static_cast<char>(bytes[pos] ^ change);
            const std::vector<char> exactly = test_support::Exactly(bytes);
            const std::optional<TimeZone> damaged = TimeZone::FromData({exactly.data(), exactly.size()});
            if (!damaged) continue;
            for (const int year : {-2000000000, 1, 1970, 2026, 2000000000}) {
                const std::time_t time = damaged->ToTime({year, 7, 1, 12, 0, 0});
                EXPECT_LE(std::abs(damaged->ToCivil(time).year - year), 1);
            }
        }
    }
}

}  // namespace
