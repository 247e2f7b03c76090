#include "Utility/DateTime/DateFormatting.h"

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "Internal/LocalTime.h"
#include "Utility/DateTime/DateUnits.h"

using utility::internal::BreakDown;
using utility::internal::kDateUnits;
using utility::internal::LocalNow;

namespace {

// Bytes that the callers of time2str and TimeValue provide.
constexpr std::size_t kTextSize = 27;
constexpr std::size_t kDigitsSize = 15;

// Copies `text`, or as much of it as fits, and a NUL.
char* CopyText(std::string_view text, char* buffer, std::size_t size) {
    buffer[text.copy(buffer, size - 1)] = '\0';
    return buffer;
}

// A year that fits no int once 1900 is added is still told right.
long Year(const std::tm& time) {
    return time.tm_year + 1900L;
}

// What follows writes behind `out` and returns the place behind that; numbers as printf's %02d, %d and %04ld do, of
// fields that the C library has kept within two digits.
char* WriteTwoDigits(int value, char* out) {
    *out++ = static_cast<char>('0' + value / 10);
    *out++ = static_cast<char>('0' + value % 10);
    return out;
}
char* WriteOneOrTwoDigits(int value, char* out) {
    if (value >= 10) return WriteTwoDigits(value, out);
    *out++ = static_cast<char>('0' + value);
    return out;
}
char* WriteYear(long year, char* out) {
    if (year < 0 || year > 9999) return out + std::sprintf(out, "%04ld", year);
    return WriteTwoDigits(static_cast<int>(year % 100), WriteTwoDigits(static_cast<int>(year / 100), out));
}
char* WriteText(std::string_view text, char* out) {
    return out + text.copy(out, text.size());
}

char* WriteDate(const std::tm& time, char separator, char* out) {
    out = WriteYear(Year(time), out);
    *out++ = separator;
    out = WriteTwoDigits(time.tm_mon + 1, out);
    *out++ = separator;
    return WriteTwoDigits(time.tm_mday, out);
}
char* WriteHourAndMinute(const std::tm& time, char* out) {
    out = WriteTwoDigits(time.tm_hour, out);
    *out++ = ':';
    return WriteTwoDigits(time.tm_min, out);
}
char* WriteClock(const std::tm& time, char* out) {
    *out++ = ' ';
    out = WriteHourAndMinute(time, out);
    *out++ = ':';
    return WriteTwoDigits(time.tm_sec, out);
}

int DateNumber(const std::tm& time) {
    return static_cast<int>(Year(time)) * 10000 + (time.tm_mon + 1) * 100 + time.tm_mday;
}

}  // namespace

char* time2str(const std::time_t& time, char* buffer, bool chinese) {
    if (time == 0) return CopyText("", buffer, kTextSize);
    std::tm local{};
    if (!BreakDown(time, local)) return CopyText("NULL", buffer, kTextSize);

    char text[80];
    char* end = text;
    if (!chinese) {
        end = WriteClock(local, WriteDate(local, '/', end));
    } else {
        end = WriteText(kDateUnits[0].view(), WriteYear(Year(local), end));
        end = WriteText(kDateUnits[1].view(), WriteOneOrTwoDigits(local.tm_mon + 1, end));
        end = WriteText(kDateUnits[2].view(), WriteOneOrTwoDigits(local.tm_mday, end));
        const bool is_midnight = local.tm_hour == 0 && local.tm_min == 0 && local.tm_sec == 0;
        if (!is_midnight) end = WriteClock(local, end);
    }
    return CopyText({text, static_cast<std::size_t>(end - text)}, buffer, kTextSize);
}

std::string formatDateTime(long time, bool short_form) {
    std::tm local{};
    if (!BreakDown(time, local)) return std::string();
    char text[80];
    char* end = WriteDate(local, '-', text);
    if (short_form) {
        *end++ = 'T';
        end = WriteHourAndMinute(local, end);
    } else {
        end = WriteClock(local, end);
    }
    return std::string(text, end);
}

std::string getDateTime(bool short_form) {
    return formatDateTime(std::time(nullptr), short_form);
}

std::string getCurDateString() {
    char text[20];
    std::snprintf(text, sizeof text, "%08d", getCurDate());
    return text;
}

int getCurDate() {
    return DateNumber(LocalNow());
}

int GetToday() {
    return getCurDate();
}

void TimeValue(char* buffer) {
    const std::tm now = LocalNow();
    char text[50];
    std::snprintf(text, sizeof text, "%08d%02d%02d%02d", DateNumber(now), now.tm_hour, now.tm_min, now.tm_sec);
    CopyText(text, buffer, kDigitsSize);
}
