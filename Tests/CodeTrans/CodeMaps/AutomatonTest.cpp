#include <gtest/gtest.h>

#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "Detector/Automaton.h"
#include "Detector/Patterns.h"

namespace {

using tools::Automaton;
using tools::Pattern;

std::vector<Pattern> Parse(const std::vector<std::string>& lines) {
    std::vector<Pattern> patterns;
    for (const std::string& line : lines) patterns.push_back(tools::ParsePattern(line));
    return patterns;
}

TEST(PatternsTest, ReadsWhatItWrites) {
    const char* const kLines[] = {"^EFBBBF = 1", "B0A1: 7 -9 5 23 >", "[80-FF][00 0A-0D] >", "0041 > 41",
                                  "B0[40 41 43]: -9 -9 -9 -9"};
    for (const std::string line : kLines) EXPECT_EQ(FormatPattern(tools::ParsePattern(line)), line);
    for (const char* line : {"", "^", "4", "4G", "[40", "[40-", "41 = x", "41: 1 2 3", "41: 11 0 0 0", "41: 0 0 0 24",
                             "41: 0 0 10 23", "41 = 2048", "41 ?", "41 > 4"})
        EXPECT_THROW(tools::ParsePattern(line), std::runtime_error) << line;
}

// Against the definition: the state is the longest beginning of a pattern that the text so far ends in.
TEST(AutomatonTest, StandsAtTheLongestBeginningOfAPattern) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        std::vector<Pattern> patterns;
        std::set<std::string> beginnings = {"a", "b", "c"};
        for (int i = 0; i < 6; ++i) {
            std::string bytes;
            for (auto length = 1 + random() % 5; length > 0; --length) beginnings.insert(bytes += "abc"[random() % 3]);
            patterns.push_back(tools::ParsePattern(tools::FormatBytes(bytes)));
        }
        const Automaton automaton(patterns);
        std::string text;
        for (int state = Automaton::kGround, i = 0; i < 100; ++i) {
            text += "abc"[random() % 3];
            state = automaton.Step(state, static_cast<unsigned char>(text.back()));
            std::size_t from = 0;
            while (beginnings.count(text.substr(from)) == 0) ++from;
            EXPECT_EQ(automaton.states()[static_cast<std::size_t>(state)].bytes, text.substr(from));
        }
    }
}

// The deltas that the packed records give a text, by the letter of the file's form.
std::vector<int> GbkDeltas(const tools::Records& records, const std::string& text) {
    std::vector<int> deltas;
    std::size_t state = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const auto next = static_cast<std::size_t>(records[state].nBase + static_cast<unsigned char>(text[pos]));
        if (records.at(next).nCheck == static_cast<int>(state)) {
            state = next;
            ++pos;
            if (records[state].nValue != test_support::kNeutral)
                deltas.push_back(tools::UnpackEffect(records[state].nValue).deltas[0]);
        } else {
            EXPECT_NE(state, 0u) << "the root leads on every byte";
            state = static_cast<std::size_t>(records[state].nFail);
            EXPECT_NE(state, 0u) << "nothing falls back to the start of the text";
        }
    }
    return deltas;
}

TEST(AutomatonTest, PacksStartChosenFallbacksAndLaterLines) {
    std::vector<int> record_of;
    const auto pack = [&](const std::vector<std::string>& lines) { return Automaton(Parse(lines)).Pack(record_of); };
    // Aligned pairs of a and b; ab at the start of the text has a score of its own; the last line for bb counts.
    const tools::Records records =
        pack({"[61 62][61 62]: 1 0 0 0 >", "6262: 2 0 0 0", "^6162: 5 0 0 0", "^616363: 6 0 0 0"});
    EXPECT_TRUE(tools::FindFaults(records).empty());
    const struct {
        const char* text;
        std::vector<int> deltas;
    } kRows[] = {
        {"aaaa", {1, 1}}, {"abab", {5, 1}}, {"abbab", {5, 1}}, {"bbbb", {2, 2}}, {"cabbb", {1, 2}},
        {"acc", {6}},     {"acb", {}},      {"accaa", {6, 1}}, {"acaa", {1}},    {"cacc", {}},
    };
    for (const auto& row : kRows) EXPECT_EQ(GbkDeltas(records, row.text), row.deltas) << row.text;
    // Overlapping pairs, where no fallback is chosen.
    EXPECT_EQ(GbkDeltas(pack({"[61 62][61 62]: 1 0 0 0"}), "abab"), (std::vector<int>{1, 1, 1}));
    // A state that leads nowhere may fall back to one that stands for more: b counts behind x as it does behind aa.
    EXPECT_EQ(GbkDeltas(pack({"616162: 3 0 0 0", "78 > 6161"}), "xbxxbb"), (std::vector<int>{3, 3}));
    for (const std::vector<std::string>& lines : {std::vector<std::string>{"61 > 61"},
                                                  {"6161 > 62", "61 > 61"},
                                                  {"61 > 62", "62 > 61"},
                                                  {"6161 > 6262"},
                                                  {"61 > 6162"},
                                                  {"^6161 > 61"}})
        EXPECT_THROW(pack(lines), std::runtime_error) << lines[0];
}

TEST(AutomatonTest, FindsEveryKindOfFault) {
    using test_support::kNeutral;
    std::vector<int> record_of;
    tools::Records records = Automaton(Parse({"6161: 1 1 1 1"})).Pack(record_of);
    const auto last = static_cast<int>(records.size());
    records.push_back({0, -1, 0, kNeutral});
    EXPECT_TRUE(tools::FindFaults(records).empty());
    // Base and check out of the table on either side, no parent, fallback out of the table and in a circle, verdicts,
    // bits.
    const tools::Records kFaults = {{last - 254, -1, 0, kNeutral},
                                    {-1, -1, 0, kNeutral},
                                    {0, last + 1, 0, kNeutral},
                                    {0, -2, 0, kNeutral},
                                    {0, last, 0, kNeutral},
                                    {0, -1, last + 1, kNeutral},
                                    {0, -1, -1, kNeutral},
                                    {0, -1, last, kNeutral},
                                    {0, -1, 0, kNeutral + (4 << 20)},
                                    {0, -1, 0, -1},
                                    {0, -1, 0, kNeutral ^ 1 << 18}};
    for (const auto& fault : kFaults) {
        records.back() = fault;
        EXPECT_EQ(tools::FindFaults(records).size(), 1u) << &fault - kFaults.data();
    }
    EXPECT_FALSE(tools::FindFaults({}).empty());
}

}  // namespace
