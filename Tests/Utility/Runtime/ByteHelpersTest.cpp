#include "Support/TestSupport.h"
#include "Utility.h"
#include "Utility/global_linux.h"

namespace {

using test_support::Bytes;

TEST(ByteHelpers, AgreeWithTheCLibraryOnEveryByte) {
    std::string all, lower, upper;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
        lower += static_cast<char>(tolower(byte));
        upper += static_cast<char>(toupper(byte));
        const char c = all.back();
        EXPECT_TRUE(GetLowerLetter(c) == lower.back() && GetUpperLetter(c) == upper.back()) << byte;
        EXPECT_TRUE(isLetter(c) == !!isalpha(byte) && isDigit(c) == !!isdigit(byte)) << byte;
    }
    std::string folded = Bytes("\0") + all + all;
    toLower(folded);
    EXPECT_EQ(folded, Bytes("\0") + lower + lower);
    toLower(all.data(), 'Y');
    EXPECT_EQ(all.substr('A' - 1, 26), "abcdefghijklmnopqrstuvwxyZ");
    EXPECT_EQ(strupr(all.data()), upper);
    EXPECT_EQ(strlwr(all.data()), lower);
}

TEST(ByteHelpers, WriteNumbersAndEditTexts) {
    for (const int value : {0, 8, 255, -1, INT_MIN, INT_MAX}) {
        for (const int radix : {2, 8, 10, 16, 36}) {
            char expected[12], buffer[12];
            std::snprintf(expected, sizeof expected, radix == 8 ? "%o" : radix == 16 ? "%x" : "%d", value);
            EXPECT_STREQ(itoa(value, buffer, radix), expected) << radix;
        }
    }
    std::string text = "a-b-c-";
    EXPECT_EQ(deleteChar(text.data(), 5, '-') + deleteChar(nullptr, 5, '-'), 3u);
    EXPECT_EQ(text, Bytes("abc\0\0-"));
    EXPECT_EQ(replaceChar("/a/b", '/', "::") + replaceChar("/a/b", '/', ""), "::a::bab");
    EXPECT_EQ(strrev(text.data()) + std::string(strrev(text.data() + 5)), "cba-");
    text = "a\326a\326\320a\326";  // two of one byte, two of two, and a lead byte
    EXPECT_EQ(countChar(text.data(), 7, 'a') * 10 + countChar(text.data(), 7, 0xFFFFD5D0), 21u);
    EXPECT_EQ(countChar(text.data(), 7, static_cast<unsigned>(-42)), 1u);
}

}  // namespace
