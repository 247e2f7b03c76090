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

// `first_ascii` is the value for U+0001; those of the other ASCII characters follow it.
template <typename Value>
constexpr std::array<Value, 65536> MakeTableOfWords(const PairTable<Value>& pairs, Value first_ascii) {
    std::array<Value, 65536> table{};
    for (unsigned trail = 0; trail < 256; ++trail) {
        Value ascii = first_ascii;
        for (unsigned lead = 1; lead < 0x80; ++lead) table[trail << 8 | lead] = ascii++;
        for (unsigned lead = 0x80; lead < 256; ++lead)
            table[trail << 8 | lead] =
                pairs[PairIndex(static_cast<unsigned char>(lead), static_cast<unsigned char>(trail))];
    }
    return table;
}

}  // namespace

constexpr PairTable<std::uint16_t> kGbkToUnicode = InvertCodeTable();
constexpr PairTable<std::uint32_t> kGbkToUtf8 = Utf8OfPairs(kGbkToUnicode);
constexpr std::array<std::uint16_t, 65536> kCharacterAtGbk = MakeTableOfWords<std::uint16_t>(kGbkToUnicode, 1);
constexpr std::array<std::uint32_t, 65536> kUtf8AtGbk = MakeTableOfWords<std::uint32_t>(kGbkToUtf8, 1u << 24 | 1);

}  // namespace utility::internal
