// Dates read and written, against the C library's conversions alone.

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "Common/Contest.h"
#include "DateTime/DateFormatting.h"
#include "DateTime/DateParsing.h"

namespace {

using namespace bench;

constexpr std::size_t kTimes = 64;

// Times of day over some forty years.
std::vector<std::time_t> Times() {
    std::vector<std::time_t> times;
    for (std::size_t i = 0; i < kTimes; ++i) times.push_back(static_cast<std::time_t>(500000000 + i * 20003777));
    return times;
}

std::string Format(std::time_t time, const char* format) {
    std::tm local;
    localtime_r(&time, &local);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &local)};
}

// `pattern` is the format for scanf.
void AddReading(const char* name, const char* format, const char* pattern) {
    std::vector<std::string> texts;
    std::vector<std::tm> broken_down;
    for (const std::time_t time : Times()) {
        std::tm local;
        localtime_r(&time, &local);
        local.tm_isdst = -1;
        broken_down.push_back(local);
        texts.push_back(Format(time, format));
    }
    const auto sum = [] {
        std::time_t total = 0;
        for (const std::time_t time : Times()) total += time;
        return std::to_string(total);
    };
    const auto text_of = [](std::time_t total) { return std::to_string(total); };
    Contest contest("str2time", name, std::to_string(kTimes), kTimes * texts[0].size(), sum);
    contest.Add(
        "ours",
        [texts] {
            return [texts] {
                std::time_t total = 0;
                for (const std::string& text : texts) total += str2time(text.c_str());
                return total;
            };
        },
        text_of);
    contest.Add(
        "sscanf",
        [texts, pattern] {
            return [texts, pattern] {
                std::time_t total = 0;
                for (const std::string& text : texts) {
                    std::tm local{};
                    std::sscanf(text.c_str(), pattern, &local.tm_year, &local.tm_mon, &local.tm_mday, &local.tm_hour,
                                &local.tm_min, &local.tm_sec);
                    local.tm_year -= 1900;
                    local.tm_mon -= 1;
                    local.tm_isdst = -1;
                    total += std::mktime(&local);
                }
                return total;
            };
        },
        text_of);
    // Reads no text at all.
    contest.Add(
        "mktime",
        [broken_down] {
            return [broken_down] {
                std::time_t total = 0;
                for (std::tm local : broken_down) total += std::mktime(&local);
                return total;
            };
        },
        text_of);
}

template <typename Write>
void AddWriting(const char* operation, const char* name, const char* format, Write write) {
    const auto with = [](auto write_one) {
        return [=] {
            return [write_one, times = Times(), texts = std::string()]() mutable -> const std::string& {
                texts.clear();
                for (const std::time_t time : times) texts += write_one(time);
                return texts;
            };
        };
    };
    const auto by_strftime = [format](std::time_t time) { return Format(time, format); };
    Contest contest(operation, name, std::to_string(kTimes), kTimes * Format(0, format).size(),
                    [=] { return with(by_strftime)()(); });
    contest.Add("ours", with(write));
    contest.Add("strftime", with(by_strftime));
}

}  // namespace

void bench::SetUpContests() {
    // A zone that a name gives; without one the C library looks for a changed file in every call.
    setenv("TZ", "Asia/Shanghai", 0);
    tzset();
    AddReading("slashes", "%Y/%m/%d %H:%M:%S", "%d/%d/%d %d:%d:%d");
    AddReading("chinese", "%Y年%m月%d日%H时%M分%S秒", "%d年%d月%d日%d时%d分%d秒");
    const auto time2str_with = [](bool chinese) {
        return [chinese](std::time_t time) {
            char buffer[27];
            return std::string(time2str(time, buffer, chinese));
        };
    };
    AddWriting("time2str", "slashes", "%Y/%m/%d %H:%M:%S", time2str_with(false));
    AddWriting("time2str", "chinese", "%Y年%-m月%-d日 %H:%M:%S", time2str_with(true));
    AddWriting("formatDateTime", "long", "%Y-%m-%d %H:%M:%S",
               [](std::time_t time) { return formatDateTime(time, false); });
    AddWriting("formatDateTime", "short", "%Y-%m-%dT%H:%M",
               [](std::time_t time) { return formatDateTime(time, true); });
}
