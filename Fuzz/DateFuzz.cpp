// Dates as text and back, and cells of filter data.

#include <TextKit.h>

#include <ctime>

#include "FuzzSupport.h"

namespace {

void CheckTime(std::time_t time) {
    for (const bool chinese : {false, true}) {
        fuzz::Exact buffer(27);
        time2str(time, buffer.get(), chinese);
        const bool is_common = time > 0 && time < 253402300800;         // four digits of a year
        const std::time_t read = chinese ? time - time % 86400 : time;  // that form's time of day is not read back
        if (is_common && read > 0) FUZZ_CHECK(str2time(buffer.get()) == read);
        if (is_common) FUZZ_CHECK(str2time(formatDateTime(time, false).c_str()) == time);
        FUZZ_CHECK(buffer.Text().size() < buffer.size() && formatDateTime(time, chinese).size() < 40);
    }
}

void CheckCells(const std::string& text, const std::string& other, int type) {
    double a = 0, b = 0;
    FUZZ_CHECK(str2filter_data(text.c_str(), &a, type) == &a && str2filter_data(other.c_str(), &b, type) == &b);
    const int order = filter_data_cmp(&a, &b, type), reverse = filter_data_cmp(&b, &a, type);
    FUZZ_CHECK(order >= -1 && order <= 1 && (order == -reverse || (order == 1 && reverse == 1)));
    double cells[] = {a, b};
    FUZZ_CHECK(IsExists(&a, cells + 1, 1, type, 0) == (order == 0));
    filter_data_cmp(text.c_str(), other.c_str(), type);
    const std::size_t sizes[] = {12, 12, 12, 21, 27, 48, 12, 318};
    fuzz::Exact written(type >= 0 && type <= 7 ? sizes[type] : 12);
    FUZZ_CHECK(filter_data2str(&a, written.get(), type) == written.get());
    double again = 0;
    str2filter_data(written.Text().c_str(), &again, type);
    const bool is_integer = type != 4 && type != 5 && type != 7;
    if (is_integer) FUZZ_CHECK(filter_data_cmp(&a, &again, type) == 0);
}

bool IsWithin(int value, int lowest, int highest) {
    return value >= lowest && value <= highest;
}

void CheckZone(const textkit::TimeZone& zone, std::time_t time) {
    const textkit::CivilTime civil = zone.ToCivil(time);
    FUZZ_CHECK(IsWithin(civil.month, 1, 12) && IsWithin(civil.day, 1, 31) && IsWithin(civil.hour, 0, 23));
    FUZZ_CHECK(IsWithin(civil.minute, 0, 59) && IsWithin(civil.second, 0, 59));
    zone.ToTime(civil);
}

void CheckTextKit(const std::string& text, const std::string& zone_data, std::time_t time) {
    if (const auto fields = textkit::ParseDate(text)) {
        FUZZ_CHECK(IsWithin(fields->year.value_or(1), 1, 9999) && IsWithin(fields->month.value_or(1), 1, 12));
        FUZZ_CHECK(IsWithin(fields->day.value_or(1), 1, 31) && IsWithin(fields->hour.value_or(0), 0, 24));
        FUZZ_CHECK(textkit::ParseTime(text).has_value() <= fields->year.has_value());
    }
    const textkit::TimeZone utc;
    CheckZone(utc, time);
    const textkit::CivilTime civil = utc.ToCivil(time >> 10);
    FUZZ_CHECK(utc.ToTime(civil) == time >> 10 || civil.year == 0x7FFFFFFF || civil.year == -0x7FFFFFFF - 1);
    if (const auto zone = textkit::TimeZone::FromData(zone_data)) {
        for (const std::time_t moment : {time, time >> 20, std::time_t{0}, std::time_t{1} << 31})
            CheckZone(*zone, moment);
        textkit::ParseTime(text, *zone);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool is_set = setenv("TZ", "UTC0", 1) == 0;
    FUZZ_CHECK(is_set);
    fuzz::Input input(data, size);
    const int type = static_cast<int>(input.Number(9)) - 1;
    const std::string text = input.Text(), other = input.Text();
    std::time_t time = 0;
    std::memcpy(&time, data, std::min(size, sizeof time));
    CheckTime(time);
    CheckTime(time >> 24);
    CheckTime(str2time(text.c_str()));
    CheckTime(cstr2time(other.c_str()));
    CheckCells(text, other, type);
    CheckTextKit(text, input.Rest(), time);
    return 0;
}
