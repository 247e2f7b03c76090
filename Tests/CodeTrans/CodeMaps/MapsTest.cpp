#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Conversion.h"

namespace {

using namespace test_support;

// The unit that a pair gives, low byte first; empty for unit 0.
std::string Decode(int encoding, const std::string& pair) {
    char unit[2] = {};
    unsigned long length = sizeof unit;
    EXPECT_EQ(GBKBig5_ToUnicode(encoding, pair.data(), 2, unit, length), 2u);
    return unit[0] == 0 && unit[1] == 0 ? "" : std::string(unit, 2);
}

// Compares all pairs with the published tables (count and FNV-1a over codes and code points, computed from these) and
// with the C library, which for Big5 has other symbols in rows A1 and A2 and fewer extensions.
TEST(MapsTest, HoldTheirTablesAndNothingElse) {
    const struct {
        int encoding;
        const char* library_name;
        int count;
        std::uint32_t checksum;
        int same, different;
    } kRows[] = {{2, "GBK", 21791, 0xA3FD9921, 21791, 0}, {3, "BIG5-HKSCS", 16877, 0x0A906562, 16735, 11}};
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    for (const auto& row : kRows) {
        int count = 0, same = 0, different = 0;
        std::uint32_t checksum = 2166136261u;
        for (unsigned code = 0x8000; code <= 0xFFFF; ++code) {
            const std::string pair = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
            const std::string unit = Decode(row.encoding, pair);
            if ((code & 0xFF) < 0x40) {
                EXPECT_EQ(unit, Decode(row.encoding, {pair[0], '\x40'})) << Hex(pair);
                continue;
            }
            std::string theirs = Convert("UCS-2LE", row.library_name, pair);
            if (theirs.size() != 2) theirs.clear();  // two characters: no double-byte character
            same += !unit.empty() && unit == theirs;
            if (!theirs.empty() && unit != theirs) {
                ++different;
                EXPECT_TRUE(row.encoding == 3 && (pair[0] == '\xA1' || pair[0] == '\xA2')) << Hex(pair);
            }
            if (unit.empty()) continue;
            ++count;
            for (const char c : pair + unit) checksum = (checksum ^ static_cast<unsigned char>(c)) * 16777619u;
        }
        EXPECT_EQ(count, row.count);
        EXPECT_EQ(checksum, row.checksum);
        EXPECT_EQ(same, row.same);
        EXPECT_EQ(different, row.different);
    }
    EXPECT_EQ(Decode(8, "\xD6\xD0"), "");
}

}  // namespace
