#include "Utility/Runtime/ByteHelpers.h"

#include <climits>
#include <cstdio>

#include "Support/TestSupport.h"
#include "Utility/global_linux.h"

namespace {

using test_support::Bytes;

TEST(ByteHelpers, AgreeWithTheCLibraryOnEveryByte) {
    for (int value = 1; value < 256; ++value) {
        const char c = static_cast<char>(value);
        char text[] = {c, c, '\0'};
        const char lower = static_cast<char>(tolower(value)), upper = static_cast<char>(toupper(value));
        EXPECT_EQ(GetLowerLetter(c), lower) << value;
        EXPECT_EQ(GetUpperLetter(c), upper) << value;
        EXPECT_EQ(isLetter(c), isalpha(value) != 0) << value;
        EXPECT_EQ(isDigit(c), isdigit(value) != 0) << value;
        EXPECT_EQ(strupr(text), std::string(2, upper));
        EXPECT_EQ(strlwr(text), std::string(2, lower));
    }
    for (const int value : {0, 8, 255, -1, INT_MIN, INT_MAX}) {
        for (const int radix : {2, 8, 10, 16, 36}) {
            char expected[12], buffer[12];
            std::snprintf(expected, sizeof expected, radix == 8 ? "%o" : radix == 16 ? "%x" : "%d", value);
            EXPECT_STREQ(itoa(value, buffer, radix), expected) << radix;
        }
    }
}

TEST(ByteHelpers, EditTexts) {
    std::string text = Bytes("A\0\xC1Z[");
    toLower(text);
    EXPECT_EQ(text, Bytes("a\0\xC1z["));
    text = "ABC-D-";
    toLower(text.data(), 2);
    EXPECT_EQ(deleteChar(text.data(), 5, '-'), 4u);
    EXPECT_EQ(text, Bytes("abCD\0-"));
    EXPECT_EQ(deleteChar(nullptr, 5, '-'), 0u);
    EXPECT_EQ(replaceChar("/a/b", '/', "::") + replaceChar("/a/b", '/', ""), "::a::bab");
    char odd[] = "abc", even[] = "\xD6\xD0", none[] = "";
    EXPECT_EQ(std::string(strrev(odd)) + strrev(even) + strrev(none), "cba\xD0\xD6");
}

TEST(ByteHelpers, CountCharactersByTheirSignedCode) {
    const std::string text =
        "a\xD6"
        "a\xD6\xD0"
        "a\xD6";
    EXPECT_EQ(countChar(text.data(), 7, 'a'), 2u);
    EXPECT_EQ(countChar(text.data(), 7, 0xFFFFD5D0), 1u);
    EXPECT_EQ(countChar(text.data(), 7, static_cast<unsigned>(-42 * 256 + 'a')), 1u);
    EXPECT_EQ(countChar(text.data(), 7, static_cast<unsigned>(-42)), 1u);  // without a partner
    EXPECT_EQ(countChar(nullptr, 0, 0), 0u);
}

}  // namespace
