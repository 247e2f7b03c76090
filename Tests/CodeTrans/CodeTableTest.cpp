#include "CodeTrans/Tables/CodeTable.h"

#include <cstdint>

#include "Support/TestSupport.h"

namespace {

// That the C library's own table has the same entries is for the tests of both conversion routes to show.
TEST(CodeTableTest, HoldsCodePage936AndNothingElse) {
    std::uint32_t checksum = 2166136261u;  // FNV-1a over the entries, low byte first
    for (const unsigned code : CodeTable) {
        checksum = (checksum ^ (code & 0xFF)) * 16777619u;
        checksum = (checksum ^ (code >> 8)) * 16777619u;
    }
    EXPECT_EQ(checksum, 0x82543781u);  // computed from the published mapping
}

}  // namespace
