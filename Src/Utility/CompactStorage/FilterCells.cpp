#include "Utility/CompactStorage/FilterCells.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "Internal/ReadInt.h"
#include "Utility/DateTime/DateFormatting.h"
#include "Utility/DateTime/DateParsing.h"

namespace {

static_assert(sizeof(double) == 8 && sizeof(std::time_t) == 8 && sizeof(float) == 4);

// The sign and 316 characters of the greatest double, and the rest of a decimal point of more than one byte.
constexpr std::size_t kLongestNumber = 1 + 316 + MB_LEN_MAX;

enum TypeCode { kInt32 = 2, kInt64 = 3, kTime = 4, kFloat = 5, kDouble = 7 };

// Cells are no doubles to the compiler where they hold something else, so they are only ever copied.
template <typename T>
T Load(const double* cell) {
    T value;
    std::memcpy(&value, cell, sizeof value);
    return value;
}

template <typename T>
void Store(T value, double* cell) {
    std::memcpy(cell, &value, sizeof value);
}

template <typename T>
int Compare(const double* a, const double* b) {
    const T left = Load<T>(a);
    const T right = Load<T>(b);
    return left < right ? -1 : left == right ? 0 : 1;
}

}  // namespace

double* str2filter_data(char const* text, double* cell, int type) {
    if (*text == '"') ++text;
    Store<std::int64_t>(0, cell);
    if (*text == '\0') return cell;
    switch (type) {
        case kInt64:
            Store<long>(std::strtol(text, nullptr, 10), cell);
            break;
        case kTime:
            Store<std::time_t>(str2time(text), cell);
            break;
        // Fractions by sscanf, as strtod takes what only begins like one: "infinite" is no number here.
        case kFloat: {
            float value = 0;
            (void)std::sscanf(text, "%f", &value);  // NOLINT(cert-err34-c): what is no number is 0
            Store(value, cell);
            break;
        }
        case kDouble: {
            double value = 0;
            (void)std::sscanf(text, "%lf", &value);  // NOLINT(cert-err34-c): as above
            Store(value, cell);
            break;
        }
        default:
            Store(utility::internal::ReadInt(text), cell);
    }
    return cell;
}

char* filter_data2str(double* cell, char* buffer, int type) {
    if (type == kTime) return time2str(Load<std::time_t>(cell), buffer, false);
    char text[kLongestNumber + 1];  // since the size of the caller's buffer is not known
    int length;
    switch (type) {
        case kInt64:
            length = std::snprintf(text, sizeof text, "%ld", Load<long>(cell));
            break;
        case kFloat:
            length = std::snprintf(text, sizeof text, "%f", static_cast<double>(Load<float>(cell)));
            break;
        case kDouble:
            length = std::snprintf(text, sizeof text, "%f", Load<double>(cell));
            break;
        default:
            length = std::snprintf(text, sizeof text, "%d", Load<int>(cell));
    }
    std::memcpy(buffer, text, static_cast<std::size_t>(length) + 1);
    return buffer;
}

int filter_data_cmp(double* a, double* b, int type) {
    switch (type) {
        case kInt64:
        case kTime:
            return Compare<std::int64_t>(a, b);
        case kFloat:
            return Compare<float>(a, b);
        case kDouble:
            return Compare<double>(a, b);
        default:
            return Compare<std::int32_t>(a, b);
    }
}

int filter_data_cmp(char const* a, char const* b, int type) {
    if (type != kInt32 && type != kInt64 && type != kFloat && type != kDouble) return std::strcmp(a, b);
    double left;
    double right;
    return filter_data_cmp(str2filter_data(a, &left, type), str2filter_data(b, &right, type), type);
}

bool IsExists(double* cell, double* cells, int count, int type, int /*unused*/) {
    for (int i = 0; i < count; ++i) {
        if (filter_data_cmp(cell, cells + i, type) == 0) return true;
    }
    return false;
}
