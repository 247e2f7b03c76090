#include "CodeTrans/Primitives/TableRoute.h"

#include "CodeTrans/Primitives/ConversionSupport.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Exactly, test_support::Hex;

std::string ConvertUnits(const std::string& ucs2, std::size_t gbk_bytes) {
    std::vector<char> gbk(gbk_bytes + 2, '\x55');
    utoGbk(Exactly(ucs2).data(), gbk.data(), ucs2.size() / 2);
    return {gbk.begin(), gbk.end()};
}

TEST(TableRouteTest, EncodesEveryUnitAsTheCLibraryEncodesGbk) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const std::string ucs2 = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        std::string expected = test_support::Iconv("UCS-2LE", "GBK", ucs2).value_or("\xA1\xA1");
        if (unit == 0x20AC) expected = std::string("\x00\x80", 2);  // the value of the table in two bytes
        ASSERT_EQ(Hex(ConvertUnits(ucs2, expected.size())), Hex(expected) + " 00 00") << unit;
    }
    EXPECT_EQ(Hex(ConvertUnits("", 0)), "00 00");
}

// One pass gives what the two steps give, in place too, on well-formed and broken text.
TEST(TableRouteTest, ConvertsUtf8InOnePass) {
    const auto fragments = test_support::Words(
        "a \xE4\xB8\xAD \xC3\xA9 \xC2\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xE4 \xB8 \xC3 \xF7 \xFF \xC0\x80 "
        "\xED\xA0\x80");
    std::mt19937 random(20240229);
    for (int round = 0; round < 5000; ++round) {
        std::string utf8;
        if (round % 16 == 0) {
            while (utf8.size() < 2100)
                utf8 += test_support::RandomRuns(random, {"中 文 字", "a b z", "é © € \xC0\x80 中 a"});
        }
        for (auto left = random() % 12; left > 0; --left) utf8 += fragments[random() % fragments.size()];
        std::vector<char> input = Exactly(utf8 + '\0'), ucs2(2 * utf8.size() + 1, '\x55');
        ucs2.resize(2 * utf8tou(input.data(), ucs2.data()));
        std::string expected(utf8.size() + 2, '\x55'), gbk = expected;
        utoGbk(ucs2.data(), expected.data(), ucs2.size() / 2);
        utf8toGbk(input.data(), gbk.data());
        EXPECT_EQ(Hex(gbk), Hex(expected)) << Hex(utf8);
        const std::size_t length = expected.find_last_of('\0') + 1;
        input.resize(utf8.size() + 2);
        utf8toGbk(input.data(), input.data());
        EXPECT_EQ(Hex({input.data(), length}), Hex(expected.substr(0, length))) << Hex(utf8);
    }
}

}  // namespace
