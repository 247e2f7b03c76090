#include "CodeTrans/Normalisation/StringFolding.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "Support/TestSupport.h"
#include "Utility/Global.h"

namespace {

using test_support::Bytes;
using test_support::Hex;

// Folds in a buffer of just the length and the NUL, which must follow the result.
std::string Fold(const std::string& text, bool keep_separators = false) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\x55');
    const unsigned long length = zipname_normalization(buffer.data(), text.size(), keep_separators);
    EXPECT_EQ(buffer[length], text.empty() ? '\x55' : '\0') << Hex(text);
    return std::string(buffer.data(), length);
}

TEST(StringFoldingTest, FoldsTheListedPairsAndNoOthers) {
    std::map<std::string, std::string> expected = {
        {"(", "A1 BE A3 A8 "},
        {")", "A1 BF A3 A9 "},
        {"\"", "A1 AE A1 B0 A1 B1 A3 A7 "},
        {"\t", "A1 A1 A1 A2 A1 A3 A1 AA A3 AC A3 AD A3 AE A3 DC A3 FC AA A4 "}};
    for (char c = '0'; c <= '9'; ++c)
        expected[{c}] = Hex(std::string{'\xA3', static_cast<char>(c - 0x80)}) + ' ';
    for (char c = 'a'; c <= 'z'; ++c) {
        expected[{c}] =
            Hex(std::string{'\xA3', static_cast<char>(c - 0xA0), '\xA3', static_cast<char>(c - 0x80)}) + ' ';
    }
    std::map<std::string, std::string> found;
    for (unsigned pair = 0x8000; pair < 0x10000; ++pair) {
        const std::string text = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        const std::string folded = Fold(text);
        if (folded != text) found[folded] += Hex(text) + ' ';
    }
    EXPECT_EQ(found, expected);
}

TEST(StringFoldingTest, FoldsTexts) {
    const struct {
        std::string text, folded, separators_kept;
    } rows[] = {
        {"", "", ""},
        {"ABC,def", "abc\tdef", "abc,def"},
        {Bytes("a/_\0Z[@`{"), "a\t\t\tz[@`{", Bytes("a/_\0z[@`{")},
        {"\xA3\xA8\xA3\xD4\xA3\xE5\xA3\xF3\xA3\xF4\xA3\xB1\xA3\xB2\xA3\xB3\xA3\xA9", "(test123)",
         "(test123)"},
        {"\xA1\xBE\xD7\xA2\xD2\xE2\xA1\xBF", "(\xD7\xA2\xD2\xE2)", "(\xD7\xA2\xD2\xE2)"},
        {"a\xA3\xAC"
         "b",
         "a\tb", "a\tb"},
        {"A\xB0,\xB0"
         "B_\xA3",
         "a\xB0,\xB0"
         "B\t\xA3",
         "a\xB0,\xB0"
         "B_\xA3"},  // any byte is a trail byte
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Hex(Fold(row.text)), Hex(row.folded)) << Hex(row.text);
        EXPECT_EQ(Hex(Fold(row.text, true)), Hex(row.separators_kept)) << Hex(row.text);
    }
    const test_support::Restore restore(g_nLangType);
    g_nLangType = 0;
    EXPECT_EQ(Hex(Fold("\xA3\xC1\xA3\xACX,")), "A3 C1 A3 AC 78 09");
}

}  // namespace
