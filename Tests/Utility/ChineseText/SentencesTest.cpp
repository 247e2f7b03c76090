#include "Utility/ChineseText/Sentences.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <tuple>

#include "Support/TestSupport.h"
#include "Utility/ChineseText/CharacterClass.h"

namespace {

using test_support::Hex;
using Row =
    std::tuple<std::string, unsigned long, unsigned long, unsigned long>;  // text, position, budget, result

constexpr unsigned long kAll = std::numeric_limits<unsigned long>::max();

TEST(SentencesTest, EndsAndStarts) {
    const Row end_rows[] = {
        {"a.b", 0, kAll, 2},     {"a.b", 0, 2, 2},
        {"a.b", 0, 1, 3},        {"a.b", 0, 0, 3},
        {"a.b", 2, kAll, 3},     {"a.b", 3, kAll, 3},
        {"a.b", 4, kAll, 3},     {"a.b", kAll, 9, 3},
        {"", 1, kAll, 0},        {"a\xD6", 0, kAll, 2},
        {"\xD6.b!", 0, kAll, 4}, {"\xB5\xE3\xA1\xA3xy\tz", 0, kAll, 7},  // the full stop of GBK is no end
        {"\xB5\xE3;", 0, 3, 3},  {"\xB5\xE3x;y", 0, 3, 5},
        {"。b.", 0, kAll, 2},    {"a。b!c", 0, kAll, 3},
        {"中。x", 0, kAll, 7},   {"中文。x", 0, kAll, 8}};
    for (const auto& [text, start, budget, end] : end_rows) {
        const std::unique_ptr<char, decltype(&std::free)> exact(strdup(text.c_str()), std::free);
        EXPECT_EQ(FindSentenceEnd(exact.get(), start, budget), end) << Hex(text) << " from " << start;
    }
    const Row start_rows[] = {{"x.yz", 4, kAll, 2},
                              {"x.yz", 4, 2, 0},
                              {"x.yz", 4, 3, 2},
                              {"xyz", 3, kAll, 0},
                              {".xy", 3, kAll, 0},
                              {"x.", 1, kAll, 0},
                              {"x.", 2, kAll, 2},
                              {"", 0, kAll, 0},
                              {"a;\xD6\xD0\xB9\xFA", 6, kAll, 2},
                              {"a;\xD6\xD0\xB9\xFA", 6, 4, 0},
                              {"\xE3\x80x", 3, kAll, 0},
                              {"x\xE3\x80y", 4, kAll, 3}};
    for (const auto& [text, position, budget, start] : start_rows) {
        EXPECT_EQ(FindSentenceStart(text.c_str(), position, budget), start)
            << Hex(text) << " from " << position;
    }
}

// Every two-byte unit and every single byte, against the search in the list itself.
TEST(SentencesTest, SentenceEndsAreWhatTheListsSay) {
    for (unsigned code = 1; code < 65536; ++code) {
        const std::string unit = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        if (unit[1] == '\0') continue;
        const bool wide = CC_Find("。！？；", unit.c_str()) != nullptr;
        if (code >= 0x8000) {
            ASSERT_EQ(FindSentenceEnd((unit + "-").c_str(), 0, kAll), wide ? 2u : 3u) << Hex(unit);
        } else if (code < 0x80) {
            const bool narrow = std::strchr(".!;?\r\n\t", unit[1]) != nullptr;
            ASSERT_EQ(FindSentenceEnd((unit.substr(1) + "-").c_str(), 0, kAll), narrow ? 1u : 2u)
                << Hex(unit);
        }
        if (code > 0xFF && (code & 0x80) != 0) {
            ASSERT_EQ(FindSentenceStart(("-" + unit).c_str(), 3, 2), wide ? 3u : 0u) << Hex(unit);
        }
    }
}

TEST(SentencesTest, TitlesAndSentencesAreJudgedByTheirEnd) {
    const std::tuple<const char*, bool, bool> rows[] = {{"", false, false},
                                                        {"a", true, false},
                                                        {"a;", false, true},
                                                        {"a.", true, true},
                                                        {"a:", true, true},
                                                        {"a)", true, true},
                                                        {"a!", true, false},
                                                        {"中。", false, true},
                                                        {"。", true, false},
                                                        {"x。", false, true},
                                                        {"中！", false, true},
                                                        {"中：", true, true},
                                                        {"中；", true, true},
                                                        {"中）", true, true},
                                                        {"中？", true, false},
                                                        {"中文", true, false},
                                                        {"\xD6\xD0\xA1\xA3", true, false}};
    for (const auto& [line, title, sentence] : rows) {
        EXPECT_EQ(IsValidTitle(line), title) << Hex(line);
        EXPECT_EQ(IsValidSentence(line), sentence) << Hex(line);
    }
}

TEST(SentencesTest, FirstOfTheLargestScores) {
    EXPECT_EQ(GetMaxIndex({}), -1);
    EXPECT_EQ(GetMaxIndex({-4, -3, -3}), 1);
    EXPECT_EQ(GetMaxIndex({NAN, 5}), 0);
    EXPECT_EQ(GetMaxIndex({1, NAN, 5}), 2);
}

}  // namespace
