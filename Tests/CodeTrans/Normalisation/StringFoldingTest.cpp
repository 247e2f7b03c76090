#include "CodeTrans/Normalisation/StringFolding.h"

#include <map>

#include "Support/TestSupport.h"
#include "Utility/Global.h"

namespace {

using test_support::Bytes, test_support::Character, test_support::Hex;

// Folds in a buffer of just the length and the NUL, which must follow the result.
std::string Fold(const std::string& text, bool keep_separators = false) {
    std::vector<char> buffer = test_support::Exactly(text + '\x55');
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
    for (unsigned c = '0'; c <= '9'; ++c) expected[Character(c)] = Hex(Character(0xA380 + c)) + ' ';
    for (unsigned c = 'a'; c <= 'z'; ++c)
        expected[Character(c)] = Hex(Character(0xA360 + c) + Character(0xA380 + c)) + ' ';
    std::map<std::string, std::string> found;
    for (unsigned code = 0x8000; code < 0x10000; ++code) {
        const std::string text = Character(code), folded = Fold(text);
        if (folded != text) found[folded] += Hex(text) + ' ';
    }
    EXPECT_EQ(found, expected);
}

TEST(StringFoldingTest, FoldsTexts) {
    // clang-format off
    const std::tuple<std::string, std::string, std::string> rows[] = {  // folded, and with the separators kept
        {"", "", ""}, {"ABC,def", "abc\tdef", "abc,def"}, {Bytes("a/_\0Z[@`{"), "a\t\t\tz[@`{", Bytes("a/_\0z[@`{")},
        {"\xA3\xA8\xA3\xD4\xD7\xA2\xA3\xACx", "(t\xD7\xA2\tx", "(t\xD7\xA2\tx"},
        {"A\xB0,\xB0" "B_\xA3", "a\xB0,\xB0" "B\t\xA3", "a\xB0,\xB0" "B_\xA3"}};  // any byte is a trail byte
    // clang-format on
    for (const auto& [text, folded, separators_kept] : rows) {
        EXPECT_EQ(Hex(Fold(text)), Hex(folded)) << Hex(text);
        EXPECT_EQ(Hex(Fold(text, true)), Hex(separators_kept)) << Hex(text);
    }
    const test_support::Restore restore(g_nLangType);
    g_nLangType = 0;
    EXPECT_EQ(Hex(Fold("\xA3\xC1\xA3\xACX,")), "A3 C1 A3 AC 78 09");
}

}  // namespace
