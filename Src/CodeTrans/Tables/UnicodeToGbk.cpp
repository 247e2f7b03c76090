#include "CodeTrans/Tables/UnicodeToGbk.h"

#include "CodeTrans/Tables/CodeTableData.h"

namespace utility::internal {

namespace {

constexpr std::array<std::uint16_t, 65536> MakeTable() {
    std::array<std::uint16_t, 65536> table{};
    for (std::size_t code_point = 0; code_point < table.size(); ++code_point) {
        const unsigned code = kUnicodeToGbk[code_point];
        if (code < 0x80) table[code_point] = static_cast<std::uint16_t>(code);
        if (code > 0xFF) table[code_point] = static_cast<std::uint16_t>(code << 8 | code >> 8);
    }
    return table;
}

}  // namespace

constexpr std::array<std::uint16_t, 65536> kGbkOfCharacter = MakeTable();

}  // namespace utility::internal
