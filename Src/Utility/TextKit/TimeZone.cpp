#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "Internal/Bytes.h"
#include "Utility/TextKit/TimeZoneData.h"

namespace textkit {

namespace {

using namespace utility::internal;

// Zones of today have files of up to four kilobytes.
constexpr std::size_t kLargestFile = 256 * 1024;
constexpr std::size_t kLongestName = 100;

std::optional<std::string> ReadSmallFile(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return std::nullopt;
    std::optional<std::string> bytes;
    struct stat status {};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
        static_cast<std::size_t>(status.st_size) <= kLargestFile) {
        std::string content(static_cast<std::size_t>(status.st_size), '\0');
        if (read(file, content.data(), content.size()) == status.st_size) bytes = std::move(content);
    }
    (void)close(file);
    return bytes;
}

// Whether every part between slashes is made of letters, digits and "_+-", so that none is empty, "." or "..".
bool IsZoneName(std::string_view name) {
    if (name.empty() || name.size() > kLongestName || name.front() == '/' || name.back() == '/') return false;
    char before = '/';
    for (const char c : name) {
        const unsigned char byte = ToByte(c);
        const bool is_part = IsAsciiLetter(byte) || IsAsciiDigit(byte) || c == '_' || c == '+' || c == '-';
        if (!is_part && !(c == '/' && before != '/')) return false;
        before = c;
    }
    return true;
}

CivilTime CivilFromSeconds(std::int64_t seconds) {
    constexpr std::int64_t kDay = 86400;
    std::int64_t days = seconds / kDay, rest = seconds % kDay;
    if (rest < 0) {
        rest += kDay;
        --days;
    }
    // The way of DaysFromCivil backwards.
    days += 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const std::int64_t day_of_era = days - era * 146097;
    const std::int64_t year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const std::int64_t month = (5 * day_of_year + 2) / 153;
    CivilTime civil;
    civil.day = static_cast<int>(day_of_year - (153 * month + 2) / 5 + 1);
    civil.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    civil.year = static_cast<int>(era * 400 + year_of_era + (month >= 10));
    civil.hour = static_cast<int>(rest / 3600);
    civil.minute = static_cast<int>(rest / 60 % 60);
    civil.second = static_cast<int>(rest % 60);
    return civil;
}

// Fields beyond their range are carried over.
std::int64_t SecondsFromCivil(const CivilTime& civil) {
    const std::int64_t months = std::int64_t{civil.year} * 12 + civil.month - 1;
    const std::int64_t year = months >= 0 ? months / 12 : (months - 11) / 12;
    const std::int64_t days = DaysFromCivil(year, static_cast<int>(months - year * 12) + 1, civil.day);
    return days * 86400 + std::int64_t{civil.hour} * 3600 + std::int64_t{civil.minute} * 60 + civil.second;
}

}  // namespace

TimeZone::TimeZone() noexcept = default;
TimeZone::TimeZone(std::shared_ptr<const Data> data) noexcept : data_(std::move(data)) {}

std::optional<TimeZone> TimeZone::FromData(std::string_view tzif) {
    std::optional<Data> data = Data::Parse(tzif);
    if (!data) return std::nullopt;
    return TimeZone(std::make_shared<const Data>(*std::move(data)));
}

std::optional<TimeZone> TimeZone::Named(std::string_view name) {
    if (name == "UTC") return TimeZone();
    if (!IsZoneName(name)) return std::nullopt;
    for (const char* const folder : {"/usr/share/zoneinfo/", "/usr/lib/zoneinfo/", "/usr/share/lib/zoneinfo/"})
        if (const std::optional<std::string> bytes = ReadSmallFile(folder + std::string(name))) return FromData(*bytes);
    return std::nullopt;
}

TimeZone TimeZone::Local() {
    const std::optional<std::string> bytes = ReadSmallFile("/etc/localtime");
    return (bytes ? FromData(*bytes) : std::nullopt).value_or(TimeZone());
}

std::time_t TimeZone::ToTime(const CivilTime& civil) const noexcept {
    const std::int64_t seconds = SecondsFromCivil(civil);
    return data_ == nullptr ? seconds : seconds - data_->OffsetAt(seconds, /*is_civil=*/true);
}

CivilTime TimeZone::ToCivil(std::time_t time) const noexcept {
    constexpr std::int64_t kLastDays = DaysFromCivil(std::numeric_limits<int>::max(), 12, 29),
                           kFirstDays = DaysFromCivil(std::numeric_limits<int>::min(), 1, 3);
    const std::int64_t seconds = std::clamp<std::int64_t>(time, kFirstDays * 86400, kLastDays * 86400);
    return CivilFromSeconds(data_ == nullptr ? seconds : seconds + data_->OffsetAt(seconds, /*is_civil=*/false));
}

std::int64_t YearlyChange::In(std::int64_t year) const {
    const std::int64_t new_year = DaysFromCivil(year, 1, 1);
    switch (kind) {
        case Kind::kDayWithoutLeapDay:
            return (new_year + day - 1 + (day > 59 && IsLeapYear(year))) * 86400 + seconds;
        case Kind::kDayOfYear:
            return (new_year + day) * 86400 + seconds;
        default:
            break;
    }
    // Weekday `day` (0 is Sunday) of a week of the month; week 5 is the last. 1970-01-01 was a Thursday.
    const std::int64_t first = DaysFromCivil(year, month, 1);
    const std::int64_t next_month = month == 12 ? DaysFromCivil(year + 1, 1, 1) : DaysFromCivil(year, month + 1, 1);
    const std::int64_t weekday_of_first = ((first + 4) % 7 + 7) % 7;
    std::int64_t days = first + (day - weekday_of_first + 7) % 7 + (week - 1) * 7;
    if (days >= next_month) days -= 7;
    return days * 86400 + seconds;
}

std::int64_t TimeZone::Data::OffsetAt(std::int64_t seconds, bool is_civil) const {
    const std::optional<ZoneChange> last = LastChange(seconds, is_civil);
    if (!last) return rule && changes.empty() ? rule->standard_offset : first_offset;
    const bool is_left_out = is_civil && seconds < last->time + last->offset_after;
    return is_left_out ? last->offset_before : last->offset_after;
}

std::optional<ZoneChange> TimeZone::Data::LastChange(std::int64_t seconds, bool is_civil) const {
    const auto has_happened = [=](const ZoneChange& change) {
        return seconds >= change.time + (is_civil ? change.offset_before : 0);
    };
    const auto next = std::partition_point(changes.begin(), changes.end(), has_happened);
    std::optional<ZoneChange> last;
    if (next != changes.begin()) last = *std::prev(next);
    if (next != changes.end() || !rule || !rule->has_daylight_saving) return last;
    // The changes of three years, in their order whichever half of the year the summer is in.
    const std::int64_t year = CivilFromSeconds(seconds).year;
    std::array<ZoneChange, 6> by_rule;
    for (int i = 0; i < 3; ++i) {
        const std::int64_t to_daylight = rule->start.In(year - 1 + i) - rule->standard_offset;
        const std::int64_t to_standard = rule->end.In(year - 1 + i) - rule->daylight_offset;
        const auto place = 2 * static_cast<std::size_t>(i);
        by_rule[place] = {to_daylight, rule->standard_offset, rule->daylight_offset};
        by_rule[place + 1] = {to_standard, rule->daylight_offset, rule->standard_offset};
    }
    std::stable_sort(by_rule.begin(), by_rule.end(),
                     [](const ZoneChange& a, const ZoneChange& b) { return a.time < b.time; });
    for (const ZoneChange& change : by_rule)
        if (has_happened(change) && (changes.empty() || change.time > changes.back().time)) last = change;
    return last;
}

}  // namespace textkit
