// Reads TZif files (RFC 8536) and the rule in their last line. Nothing in them is trusted.

#include <cstddef>

#include "Internal/Bytes.h"
#include "Utility/TextKit/TimeZoneData.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::int64_t kMostOffset = 26 * 3600;
constexpr std::int64_t kMostTime = std::int64_t{1} << 60;

constexpr std::size_t kHeaderSize = 44;
constexpr std::size_t kTypeSize = 6;

// The number of `size` bytes, highest first, as two's complement.
std::int64_t BigEndian(std::string_view bytes, std::size_t pos, std::size_t size) {
    std::uint64_t value = ToByte(bytes[pos]) >= 0x80 ? ~std::uint64_t{0} : 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | ToByte(bytes[pos + i]);
    return static_cast<std::int64_t>(value);
}

struct Header {
    std::size_t utc_indicators, standard_indicators, leap_seconds, times, types, name_bytes;

    // None unless it stands at the start and the block behind it fits; numbers in the block have `number_size` bytes.
    static std::optional<Header> Read(std::string_view file, std::size_t number_size) {
        if (file.size() < kHeaderSize || file.compare(0, 4, "TZif") != 0) return std::nullopt;
        std::size_t counts[6];
        for (std::size_t i = 0; i < 6; ++i) {
            const std::int64_t count = BigEndian(file, 20 + 4 * i, 4);
            if (count < 0 || static_cast<std::size_t>(count) > file.size()) return std::nullopt;
            counts[i] = static_cast<std::size_t>(count);
        }
        const Header header{counts[0], counts[1], counts[2], counts[3], counts[4], counts[5]};
        if (header.types == 0 || header.types > 256 || header.BlockSize(number_size) > file.size() - kHeaderSize)
            return std::nullopt;
        return header;
    }
    std::size_t BlockSize(std::size_t number_size) const {
        return times * (number_size + 1) + types * kTypeSize + name_bytes + leap_seconds * (number_size + 4) +
               standard_indicators + utc_indicators;
    }
};

// Reads a rule from left to right.
class RuleReader {
public:
    explicit RuleReader(std::string_view text) : rest_(text) {}

    std::optional<YearlyRule> Read() {
        YearlyRule rule;
        if (!SkipName() || !ReadOffset(rule.standard_offset)) return std::nullopt;
        if (rest_.empty()) return rule;
        rule.has_daylight_saving = true;
        rule.daylight_offset = rule.standard_offset + 3600;
        if (!SkipName()) return std::nullopt;
        if (!rest_.empty() && rest_[0] != ',' && !ReadOffset(rule.daylight_offset)) return std::nullopt;
        if (!ReadChange(rule.start) || !ReadChange(rule.end) || !rest_.empty()) return std::nullopt;
        return rule;
    }

private:
    bool Skip(char c) {
        if (rest_.empty() || rest_[0] != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool SkipName() {
        const bool quoted = Skip('<');
        std::size_t length = 0;
        while (length < rest_.size() &&
               (IsAsciiLetter(ToByte(rest_[length])) ||
                (quoted && (IsAsciiDigit(ToByte(rest_[length])) || rest_[length] == '+' || rest_[length] == '-'))))
            ++length;
        rest_.remove_prefix(length);
        return length >= 3 && (!quoted || Skip('>'));
    }

    bool ReadNumber(int least, int most, int& number) {
        std::size_t length = 0;
        number = 0;
        for (; length < rest_.size() && IsAsciiDigit(ToByte(rest_[length])) && number <= most; ++length)
            number = number * 10 + (rest_[length] - '0');
        rest_.remove_prefix(length);
        return length > 0 && number >= least && number <= most;
    }

    // [+-]hh[:mm[:ss]]
    bool ReadSeconds(int most_hours, std::int64_t& seconds) {
        const bool negative = Skip('-');
        if (!negative) Skip('+');
        int hours = 0, minutes = 0, rest = 0;
        if (!ReadNumber(0, most_hours, hours)) return false;
        if (Skip(':') && (!ReadNumber(0, 59, minutes) || (Skip(':') && !ReadNumber(0, 59, rest)))) return false;
        seconds = hours * 3600 + minutes * 60 + rest;
        if (negative) seconds = -seconds;
        return true;
    }

    // The text counts west of UTC.
    bool ReadOffset(std::int64_t& offset) {
        if (!ReadSeconds(24, offset)) return false;
        offset = -offset;
        return true;
    }

    bool ReadChange(YearlyChange& change) {
        if (!Skip(',')) return false;
        if (Skip('M')) {
            change.kind = YearlyChange::Kind::kWeekday;
            if (!ReadNumber(1, 12, change.month) || !Skip('.') || !ReadNumber(1, 5, change.week) || !Skip('.') ||
                !ReadNumber(0, 6, change.day))
                return false;
        } else {
            const bool without_leap_day = Skip('J');
            change.kind = without_leap_day ? YearlyChange::Kind::kDayWithoutLeapDay : YearlyChange::Kind::kDayOfYear;
            if (!ReadNumber(without_leap_day ? 1 : 0, 365, change.day)) return false;
        }
        return !Skip('/') || ReadSeconds(167, change.seconds);
    }

    std::string_view rest_;
};

// The changes in the block behind `header`, whose numbers have `number_size` bytes; false if they are damaged.
bool ReadChanges(std::string_view block, const Header& header, std::size_t number_size, TimeZone::Data& data) {
    const std::size_t types_at = header.times * (number_size + 1);
    const auto read_offset = [&](std::size_t type) { return BigEndian(block, types_at + type * kTypeSize, 4); };
    for (std::size_t type = 0; type < header.types; ++type)
        if (read_offset(type) < -kMostOffset || read_offset(type) > kMostOffset) return false;
    data.first_offset = read_offset(0);
    data.changes.reserve(header.times);
    std::int64_t offset = data.first_offset;
    for (std::size_t i = 0; i < header.times; ++i) {
        const std::int64_t time = BigEndian(block, i * number_size, number_size);
        const std::size_t type = ToByte(block[header.times * number_size + i]);
        if (type >= header.types || time < -kMostTime || time > kMostTime) return false;
        if (!data.changes.empty() && time <= data.changes.back().time) return false;
        data.changes.push_back({time, offset, read_offset(type)});
        offset = data.changes.back().offset_after;
    }
    return true;
}

}  // namespace

std::optional<YearlyRule> YearlyRule::Parse(std::string_view text) {
    return RuleReader(text).Read();
}

std::optional<TimeZone::Data> TimeZone::Data::Parse(std::string_view tzif) {
    std::size_t number_size = 4;
    std::optional<Header> header = Header::Read(tzif, number_size);
    if (!header) return std::nullopt;
    const bool has_second_block = tzif[4] >= '2';
    if (has_second_block) {
        // Everything again, in numbers of eight bytes.
        tzif.remove_prefix(kHeaderSize + header->BlockSize(number_size));
        number_size = 8;
        header = Header::Read(tzif, number_size);
        if (!header) return std::nullopt;
    }
    Data data;
    const std::string_view block = tzif.substr(kHeaderSize, header->BlockSize(number_size));
    if (header->leap_seconds != 0 || !ReadChanges(block, *header, number_size, data)) return std::nullopt;
    if (!has_second_block) return data;
    const std::string_view footer = tzif.substr(kHeaderSize + block.size());
    if (footer.size() < 2 || footer.front() != '\n' || footer.back() != '\n') return std::nullopt;
    if (footer.size() > 2) {
        data.rule = YearlyRule::Parse(footer.substr(1, footer.size() - 2));
        if (!data.rule) return std::nullopt;
    }
    return data;
}

}  // namespace textkit
