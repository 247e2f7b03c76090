#include "CodeTrans/Tables/GbkToUnicode.h"

#include "CodeTrans/Tables/CodeTableData.h"

namespace utility::internal {

namespace {

constexpr PairTable<std::uint16_t> InvertCodeTable() {
    PairTable<std::uint16_t> table{};
    for (unsigned code_point = 0x80; code_point < 0x10000; ++code_point) {
        const unsigned code = kUnicodeToGbk[code_point];
        if (code <= 0xFF) continue;
        table[PairIndex(static_cast<unsigned char>(code >> 8), static_cast<unsigned char>(code & 0xFF))] =
            static_cast<std::uint16_t>(code_point);
    }
    return table;
}

}  // namespace

constexpr PairTable<std::uint16_t> kGbkToUnicode = InvertCodeTable();
constexpr PairTable<std::uint32_t> kGbkToUtf8 = Utf8OfPairs(kGbkToUnicode);

}  // namespace utility::internal
