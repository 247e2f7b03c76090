#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Conversion.h"
#include "CodeTrans/CodeMaps/Detection.h"

namespace {

using namespace test_support;

// Array allocations above this many bytes fail, in the library too.
std::size_t g_allocation_limit = SIZE_MAX;

}  // namespace

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return size > g_allocation_limit ? nullptr : std::malloc(size);
}
void* operator new[](std::size_t size) {
    return std::malloc(size);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

std::string WithCount(std::uint32_t count, std::size_t bytes_behind) {
    std::string bytes(kMapsSize, '\0');
    AppendInt(bytes, count);
    return bytes + std::string(bytes_behind, '\0');
}

void ExpectLoaded(bool loaded) {
    EXPECT_EQ(CodeTrans_CodeDetect("", 0), loaded ? 2 : 0);
    for (const auto convert : {GBKBig5_ToUnicode, CodeTrans_ToUnicode, CodeTrans_ToUtf8, CodeTrans_ToAnsi}) {
        char output[8];
        unsigned long length = sizeof output;
        EXPECT_EQ(convert(0, "ab", 2, output, length) != 0, loaded);
        EXPECT_EQ(length != 0, loaded);
    }
}

TEST(LoaderTest, NamesWhatIsMissingAndStaysUnloaded) {
    const auto zeros = [](std::size_t count) { return std::string(count, '\0'); };
    const std::map<int, std::vector<std::string>> kRows = {
        {-1, {"", zeros(49151)}},
        {-2, {zeros(49152), zeros(98303)}},
        {-3, {zeros(98304), zeros(98307)}},
        // 64 GiB that are not there, and a count whose 16-fold is 16 in 32 bits.
        {-4, {WithCount(1, 0), WithCount(1, 15), WithCount(0xFFFFFFFF, 20), WithCount(0x10000001, 16)}},
        {0, {WithCount(0, 0), WithCount(1, 16), WithCount(1, 17)}},
    };
    for (const auto& [result, files] : kRows) {
        for (const std::string& file : files) {
            SCOPED_TRACE(file.size());
            ASSERT_EQ(Load(DataFileBytes(OneByteAutomaton())), 0);
            EXPECT_EQ(Load(file), result);
            ExpectLoaded(result == 0);
        }
    }
    CodeTrans_Destroy();
    CodeTrans_Destroy();
    ExpectLoaded(false);
    const TempFolder folder;
    for (const std::string& path : {folder / "none", folder.path().string()})
        EXPECT_EQ(CodeTrans_Initialize(path.c_str()), -1) << path;
    EXPECT_EQ(CodeTrans_Initialize(nullptr), -1);
}

TEST(LoaderTest, ReportsThatMemoryIsShort) {
    const Restore restore(g_allocation_limit);
    const std::string large = DataFileBytes(std::vector<Record>(10'000, Record{0, -1, 0, kNeutral}));
    for (const std::size_t limit : {49'151u, 159'999u}) {  // a map, the records
        g_allocation_limit = limit;
        EXPECT_EQ(Load(large), -127);
        ExpectLoaded(false);
    }
    EXPECT_EQ(Load(WithCount(0xFFFFFFFF, 20)), -4) << "tried to allocate what the file cannot hold";
}

// A repair that walked each chain to its end would take minutes for either table.
TEST(LoaderTest, LongChainsAndCirclesLoadInLinearTime) {
    constexpr int kRecords = 1'000'000;
    for (const int end : {0, kRecords - 1}) {  // a chain to the root; a circle of all records but the root
        std::vector<Record> records(kRecords, Record{-1000, -1, 0, kNeutral});
        for (int i = 1; i < kRecords; ++i) records[static_cast<std::size_t>(i)].fail = i - 1;
        records[1].fail = end;
        EXPECT_EQ(Load(DataFileBytes(records)), 0);
        EXPECT_EQ(CodeTrans_CodeDetect("abc", 3), 2);
    }
    CodeTrans_Destroy();
}

}  // namespace
