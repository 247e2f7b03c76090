#ifndef UTILITY_DATETIME_DATEUNITS_H
#define UTILITY_DATETIME_DATEUNITS_H

// The characters behind the numbers of a Chinese date, in UTF-8, from the year down to the second.

#include "Internal/EncodedList.h"

namespace utility::internal {

constexpr EncodedList<4> kDateUnits[] = {Utf8("年"), Utf8("月"), Utf8("日"), Utf8("时"), Utf8("分"), Utf8("秒")};
static_assert(kDateUnits[0].size() == 3 && kDateUnits[5].size() == 3);

}  // namespace utility::internal

#endif
