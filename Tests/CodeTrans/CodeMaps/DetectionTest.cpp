#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/Detection.h"

namespace {

using namespace test_support;

int Detect(const std::string& text) {
    return CodeTrans_CodeDetect(text.data(), text.size());
}

// Digits stand for ASCII bytes, letters for bytes from 80 up; each has a score of its own.
TEST(DetectionTest, DecidesBySumsAndCounts) {
    std::vector<Record> records = OneByteAutomaton();
    const auto give = [&](int byte, int value) { records[static_cast<std::size_t>(1 + byte)].value = value; };
    give('1', 75792);  // GBK 3
    give('2', Score(0, 1, 0, 0));
    give('3', Score(0, 0, 1, 0));
    give('4', Score(0, 0, 0, 1));
    give('5', Score(0, 3, 0, 3));
    give('6', Score(0, 0, 3, 3));
    give('7', kNeutral + (1 << 18));
    give('8', Score(-9, 10, -9, -9));
    give('9', 9 + 20 * 9 + 400 * 9 + 8000 * 32);  // UTF-8 23, the most that the bits hold
    give('u', 1124365);
    give('n', kNeutral - (1 << 20));
    give('c', kNeutral + (5 << 20));
    give(0xC0, Score(3, 0, 0, 0));
    ASSERT_EQ(Load(DataFileBytes(records)), 0);

    const std::string ten3(10, '3');
    const auto highs = [&](std::size_t count) { return std::string(count, '\xB0'); };
    const struct {
        int verdict;
        std::vector<std::string> texts;
    } kRows[] = {
        // No score. None in favour is more than nothing of 0 bytes from 80 up, but not than 3 / 4 = 0.
        {2, {"", "xyz"}},
        {0, {highs(3)}},
        // One in favour must be more than a quarter or, for UTF-8, a sixth of those bytes.
        {2, {"1" + highs(3), "\xC0" + highs(2)}},
        {3, {"2" + highs(3)}},
        {1, {"4" + highs(5)}},
        {0, {"1" + highs(4), "2" + highs(4), "4" + highs(6), "\xC0" + highs(3)}},
        // The higher sum, at a tie the earlier: GBK 3 and Big5 3; Big5 and UTF-8; UTF-8 and Unicode.
        {2, {"1222", "911111111"}},
        {3,
         {"12222", "5", "888" + ten3 + ten3,
          std::string("\0"
                      "2\0",
                      3)}},
        {1, {"14444", "6", "91111111"}},
        // Unicode by (in favour + 9) / (others + 1) > 9: 10 / 1, 20 / 2, and neutral or high bytes do not matter; 10 / 2 and
        // 19 / 2 in whole numbers leave it out.
        {8, {"3", ten3 + "37", ten3 + "ab", "3" + highs(100)}},
        {2, {"37", ten3 + "7"}},
        {0, {"3337" + highs(4)}},
        // Verdicts, whatever comes before and after.
        {1, {"2222u", "u88888"}},
        {-1, {"n1"}},
        {5, {"3c1"}},
    };
    for (const auto& row : kRows)
        for (const std::string& text : row.texts) EXPECT_EQ(Detect(text), row.verdict) << Hex(text);
}

// The patterns ab, b, bd and B0 B1: a state falls back to the longest pattern that its bytes end in, and only states that
// a byte leads to count.
TEST(DetectionTest, FallsBackAlongFailureLinks) {
    constexpr int kBase = 400, kA = kBase + 'a', kB = kBase + 'b', kHigh = kBase + 0xB0;
    constexpr int kAb = 301, kBd = 302, kHighPair = 303;
    std::vector<Record> records(1000, Record{0, -1, 0, kNeutral});
    records[0].base = kBase;
    records[kA] = {kAb - 'b', 0, 0, kNeutral};
    records[kB] = {kBd - 'd', 0, 0, Score(10, 0, 0, 0)};
    records[kHigh] = {kHighPair - 0xB1, 0, 0, kNeutral};
    records[kAb] = {0, kA, kB, Score(0, 1, 0, 0)};
    records[kBd] = {0, kB, 0, Score(0, 0, 0, 5)};
    records[kHighPair] = {0, kHigh, 0, Score(0, 1, 0, 0)};
    ASSERT_EQ(Load(DataFileBytes(records)), 0);
    EXPECT_EQ(Detect("b"), 2);
    EXPECT_EQ(Detect("ab"), 3);   // b itself, where ab would fall back to, adds nothing
    EXPECT_EQ(Detect("abd"), 1);  // ab falls back to b, which leads to bd
    EXPECT_EQ(Detect("aab"), 3);  // a falls back to the root and the byte is seen again
    // Three bytes from 80 up, one of them seen twice: 1 > 3 / 4. Counted twice it would not be.
    EXPECT_EQ(Detect("\xB0\xB0\xB1"), 3);
    EXPECT_EQ(Detect("\xB0\xB0\xB0\xB1"), 0);
}

TEST(DetectionTest, SurvivesLinksThatLeadAstray) {
    constexpr int kFar = 0x7FFFFFFF, kDeep = -kFar - 1;
    const int kBases[] = {0, 1, -1, 200, 257, kFar, kDeep, -255};
    const int kFails[] = {0, 1, 5, 6, 7, 257, kFar, -1, kDeep};
    const std::string text = "abcabcaabbccB\xB0\xFF\x01\x02";
    for (const int base : kBases) {
        for (const int fail : kFails) {
            SCOPED_TRACE(std::to_string(base) + " " + std::to_string(fail));
            std::vector<Record> records = OneByteAutomaton();
            for (std::size_t i = 1; i < records.size(); ++i) records[i] = {base, 0, fail, kNeutral};
            records[static_cast<std::size_t>(1 + 'c')].value = Score(0, 1, 0, 0);
            records[5].fail = 6;  // a circle of 5, 6 and 7; where fail is 5, 6 or 7 all others lead into it
            records[6].fail = 7;
            records[7].fail = 5;
            ASSERT_EQ(Load(DataFileBytes(records)), 0);
            // Each state falls back to the root in the end, so every c is met.
            EXPECT_EQ(Detect("c"), 3);
            EXPECT_EQ(Detect(text), 3);
        }
    }
    // A root that falls back to a state that falls back to the root is no circle: the root never falls back.
    std::vector<Record> records = OneByteAutomaton();
    records[0].fail = 1 + 'a';
    ASSERT_EQ(Load(DataFileBytes(records)), 0);
    EXPECT_EQ(Detect("aaa"), 2);
    // nBase -1 leads on byte 1 to the root itself, if that says it is entered from there.
    records[0] = {-1, 0, 0, Score(0, 1, 0, 0)};
    ASSERT_EQ(Load(DataFileBytes(records)), 0);
    EXPECT_EQ(Detect("\x01\x01"), 3);
    CodeTrans_Destroy();
}

}  // namespace
