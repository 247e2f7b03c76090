#ifndef UTILITY_INTERNAL_LOCALTIME_H
#define UTILITY_INTERNAL_LOCALTIME_H

#include <ctime>

namespace utility::internal {

// Breaks `time` down in the local time zone; false if its year does not fit. In a state of its own, unlike localtime,
// whose result all threads share. Need not look at TZ again: that is for a host that changes it.
inline bool BreakDown(std::time_t time, std::tm& local) {
    return localtime_r(&time, &local) != nullptr;
}

// The current time, broken down.
inline std::tm LocalNow() {
    std::tm local{};
    BreakDown(std::time(nullptr), local);
    return local;
}

// Date and time of day `seconds` (not negative) after `time`, in whose time zone nothing changes meanwhile. Without the C
// library, whose conversions take a lock that is never free again in a process forked off at a bad moment.
constexpr std::tm Later(std::tm time, long seconds) {
    seconds += time.tm_hour * 3600L + time.tm_min * 60L + time.tm_sec;
    time.tm_sec = static_cast<int>(seconds % 60);
    time.tm_min = static_cast<int>(seconds / 60 % 60);
    time.tm_hour = static_cast<int>(seconds / 3600 % 24);
    for (long days = seconds / 86400; days > 0; --days) {
        const int year = time.tm_year + 1900;
        const bool is_leap_year = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        constexpr int kMonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        if (++time.tm_mday <= kMonthDays[time.tm_mon] + (time.tm_mon == 1 && is_leap_year ? 1 : 0)) continue;
        time.tm_mday = 1;
        if (++time.tm_mon < 12) continue;
        time.tm_mon = 0;
        ++time.tm_year;
    }
    return time;
}

}  // namespace utility::internal

#endif
