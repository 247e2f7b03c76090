#include "Utility/CompactStorage/Serialisation.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "Support/StreamSupport.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Bytes;
using test_support::BytesIn;
using test_support::Hex;
using test_support::StreamOf;

TEST(Serialisation, CodesIntegersInOneToFourBytes) {
    const struct {
        int value;
        const char* code;
    } rows[] = {
        {0, "00"},
        {63, "3F"},
        {64, "40 40"},
        {16'383, "7F FF"},
        {16'384, "80 40 00"},
        {0x123456, "92 34 56"},
        {4'194'303, "BF FF FF"},
        {4'194'304, "C0 40 00 00"},
        {0x12345678, "D2 34 56 78"},
        {(1 << 30) - 1, "FF FF FF FF"},
        {1 << 30, ""},
        {-1, ""},
        {INT_MIN, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        char code[5] = "????";
        auto* const bytes = reinterpret_cast<unsigned char*>(code);
        const int size = int_compress(row.value, bytes);
        EXPECT_EQ(Hex(std::string(code, static_cast<std::size_t>(size))), row.code);
        EXPECT_EQ(std::string(code + size), std::string(4 - static_cast<std::size_t>(size), '?'));
        if (size == 0) continue;
        int value = -5;
        EXPECT_EQ(int_uncompress(bytes, &value), size);
        EXPECT_EQ(value, row.value);
    }
}

TEST(Serialisation, PutsStringsBehindTheirLength) {
    const test_support::Stream file = StreamOf();
    EXPECT_EQ(tstring_save("abcd", file.get()), 4u);
    EXPECT_EQ(tstring_save(Bytes("x\0y"), file.get()), 3u);
    EXPECT_EQ(tstring_save(std::string(10'000, 'z'), file.get()), 10'000u);
    EXPECT_EQ(Hex(BytesIn(file).substr(0, 16)), "04 00 00 00 61 62 63 64 03 00 00 00 78 00 79 10");
    for (const std::string& expected :
         {std::string("abcd"), std::string("x"), std::string(10'000, 'z'), std::string()}) {
        std::string text = "before";
        tstring_load(text, file.get());
        EXPECT_EQ(text, expected);
    }
    const std::string damaged[] = {Bytes("\x04\0\0\0ab"), Bytes("\xFF\xFF\xFF\xFF") + "ab",
                                   Bytes("\x09\0\0\0ab\0cd")};
    for (const std::string& bytes : damaged) {
        std::string text;
        tstring_load(text, StreamOf(bytes).get());
        EXPECT_EQ(text, "ab") << Hex(bytes);
    }
}

TEST(Serialisation, AppendsIntegersToABuffer) {
    char* buffer = nullptr;
    int used = 0;
    int capacity = 0;
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, 0x01020304, true), 4);
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, 0x01020304, false), 8);
    EXPECT_EQ(Hex(std::string(buffer, 8)), "01 02 03 04 04 03 02 01");
    EXPECT_EQ(capacity, 1024);
    while (used < 1016) WriteBuf(&buffer, used, capacity, -2, false);
    EXPECT_EQ(capacity, 1024);
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, -2, true), 1020);
    EXPECT_EQ(capacity, 2040);
    EXPECT_EQ(Hex(std::string(buffer + 1012, 8)), "FE FF FF FF FF FF FF FE");
    used = capacity = INT_MAX - 3;
    EXPECT_EQ(WriteBuf(&buffer, used, capacity, 1, false), INT_MAX - 3);
    std::free(buffer);
}

}  // namespace
