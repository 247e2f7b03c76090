#include "Utility/DateTime/DateParsing.h"

#include <cstddef>
#include <cstring>
#include <string>

#include "Internal/ReadInt.h"
#include "Utility/DateTime/DateUnits.h"
#include "Utility/Runtime/LogWriter.h"

using utility::internal::kDateUnits;
using utility::internal::ReadInt;

namespace {

// Year, month, day, hour, minute, second as written.
using Fields = int[6];

// Without the overflow that the least ints would have.
int Minus(int value, unsigned subtrahend) {
    return static_cast<int>(static_cast<unsigned>(value) - subtrahend);
}

std::time_t ToTime(const Fields& fields) {
    std::tm local{};
    local.tm_year = Minus(fields[0], 1900);
    local.tm_mon = Minus(fields[1], 1);
    local.tm_mday = fields[2];
    local.tm_hour = fields[3];
    local.tm_min = fields[4];
    local.tm_sec = fields[5];
    local.tm_isdst = -1;
    return std::mktime(&local);
}

std::time_t Fail(const char* text) {
    WriteError(std::string("strDateStr[") + text + "] err \n", nullptr);
    return -1;
}

// Hour, minute and second behind the blank or underscore in `text`; what is missing stays as it is.
void ReadClock(const char* text, Fields& fields) {
    const char* mark = std::strchr(text, ' ');
    if (mark == nullptr) mark = std::strchr(text, '_');
    for (std::size_t field = 3; field < 6 && mark != nullptr; ++field) {
        fields[field] = ReadInt(mark + 1);
        mark = std::strchr(mark + 1, ':');
    }
}

}  // namespace

std::time_t str2time(const char* text) {
    if (text == nullptr || *text == '\0') return 0;
    const char separator = std::strchr(text, '-') != nullptr ? '-' : '/';
    const char* const first = std::strchr(text, separator);
    if (first == nullptr) {
        const std::time_t time = cstr2time(text);
        return time > 0 ? time : Fail(text);
    }
    const char* const second = std::strchr(first + 1, separator);
    if (second == nullptr) return Fail(text);
    Fields fields = {ReadInt(text), ReadInt(first + 1), ReadInt(second + 1)};
    ReadClock(second + 1, fields);
    return ToTime(fields);
}

std::time_t cstr2time(const char* text) {
    Fields fields = {};
    for (std::size_t field = 0; field < 6; ++field) {
        const char* const unit = std::strstr(text, kDateUnits[field].c_str());
        if (unit == nullptr) continue;
        fields[field] = ReadInt(text);
        text = unit + kDateUnits[field].size();
    }
    return ToTime(fields);
}
