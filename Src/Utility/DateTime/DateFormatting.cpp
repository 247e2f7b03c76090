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

int DateNumber(const std::tm& time) {
    return static_cast<int>(Year(time)) * 10000 + (time.tm_mon + 1) * 100 + time.tm_mday;
}

}  // namespace

char* time2str(const std::time_t& time, char* buffer, bool chinese) {
    if (time == 0) return CopyText("", buffer, kTextSize);
    std::tm local{};
    if (!BreakDown(time, local)) return CopyText("NULL", buffer, kTextSize);

    const long year = Year(local);
    const int month = local.tm_mon + 1;
    char clock[40];
    std::snprintf(clock, sizeof clock, " %02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec);
    char text[100];
    if (!chinese) {
        std::snprintf(text, sizeof text, "%04ld/%02d/%02d%s", year, month, local.tm_mday, clock);
    } else {
        const bool is_midnight = local.tm_hour == 0 && local.tm_min == 0 && local.tm_sec == 0;
        std::snprintf(text, sizeof text, "%04ld%s%d%s%d%s%s", year, kDateUnits[0].c_str(), month, kDateUnits[1].c_str(),
                      local.tm_mday, kDateUnits[2].c_str(), is_midnight ? "" : clock);
    }
    return CopyText(text, buffer, kTextSize);
}

std::string formatDateTime(long time, bool short_form) {
    std::tm local{};
    if (!BreakDown(time, local)) return std::string();
    char text[80];
    const int length = short_form
                           ? std::snprintf(text, sizeof text, "%04ld-%02d-%02dT%02d:%02d", Year(local),
                                           local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min)
                           : std::snprintf(text, sizeof text, "%04ld-%02d-%02d %02d:%02d:%02d", Year(local),
                                           local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return std::string(text, static_cast<std::size_t>(length));
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
