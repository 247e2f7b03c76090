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

}  // namespace utility::internal

#endif
