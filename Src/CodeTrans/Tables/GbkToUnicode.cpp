#include "CodeTrans/Tables/GbkToUnicode.h"

#include "CodeTrans/Tables/CodeTableData.h"

namespace utility::internal {

namespace {

// A code outside the table would index past its end, which does not compile.
constexpr GbkToUnicodeTable InvertCodeTable() {
    GbkToUnicodeTable table{};
    for (unsigned code_point = 0x80; code_point < 0x10000; ++code_point) {
        const unsigned code = kUnicodeToGbk[code_point];
        if (code <= 0xFF) continue;
        table[((code >> 8) - kFirstGbkLead) * kGbkTrails + ((code & 0xFF) - kFirstGbkTrail)] =
            static_cast<std::uint16_t>(code_point);
    }
    return table;
}

}  // namespace

constexpr GbkToUnicodeTable kGbkToUnicode = InvertCodeTable();

}  // namespace utility::internal
