#include "CodeTrans/CodeMaps/ScanForm.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"

namespace {

using namespace test_support;

// The form that scans run on against the states themselves, on automata of any shape.
TEST(ScanFormTest, GivesWhatTheStatesGive) {
    using namespace utility::internal;
    std::mt19937 random(11);
    const auto expect_same = [](const DetectionTable& with_form, const std::string& text) {
        const DetectionTable without{with_form.states, with_form.count};
        const DetectionResult form = DetectEncoding(with_form, text.data(), text.size());
        const DetectionResult states = DetectEncoding(without, text.data(), text.size());
        ASSERT_EQ(std::tuple(form.encoding, form.declared, form.lead),
                  std::tuple(states.encoding, states.declared, states.lead))
            << Hex(text);
    };
    for (int round = 0; round < 3000; ++round) {
        // Few states, close to each other, that lead to one another, to none and out of the table; chains lead downwards.
        std::vector<_tTrieNode> states(1 + random() % 400);
        const auto count = static_cast<int>(states.size());
        for (int i = 0; i < count; ++i) {
            const int value = random() % 3 == 0 ? kNeutral : static_cast<int>(random() % 0x40000);
            states[static_cast<std::size_t>(i)] = {static_cast<int>(random() % 300) - 128,
                                                   static_cast<int>(random() % static_cast<unsigned>(count + 1)) - 1,
                                                   i == 0 ? 0 : static_cast<int>(random() % static_cast<unsigned>(i)),
                                                   value};
        }
        // Most are entered from near the root.
        for (_tTrieNode& state : states)
            state.nCheck = random() % 2 == 0 ? static_cast<int>(random() % 4) - 1 : state.nCheck;
        if (random() % 4 == 0) states.back().nValue = kNeutral + (static_cast<int>(random() % 9) - 4) * (1 << 20);
        const ScanForm form(states.data(), states.size());
        for (int texts = 0; texts < 5; ++texts) {
            std::string text;
            for (auto left = random() % 700; left > 0; --left)
                text += static_cast<char>(random() % 4 == 0 ? random() : 'a' + random() % 8);
            expect_same({states.data(), states.size(), &form}, text);
        }
    }
    // The library's own automaton, where runs of ASCII are skipped, on text in every encoding.
    LoadedTables own;
    ASSERT_EQ(LoadTables(UTILITY_TEST_DATA_FILE, own), 0);
    const DetectionTable table{own.states.get(), own.state_count, own.scan_form.get()};
    std::size_t rings = 0;
    for (unsigned hub = 0; hub < own.scan_form->hubs(); ++hub) rings += own.scan_form->ring(hub).exists;
    EXPECT_EQ(rings, 1u);
    const std::string han = "这是一个用来测试的句子，图书馆每周一至周五上午九点开放。";
    const auto own_text = [&](int encoding) {
        std::string text;
        for (auto left = random() % 12; left > 0; --left) {
            const char* const encodings[] = {"GBK", "BIG5", "UTF-8", "UCS-2LE"};
            const std::string piece = random() % 2 == 0
                                          ? han.substr(3 * (random() % 10), 3 * (random() % 20))
                                          : std::string(random() % 40, 'x') + "<a href=\"/b/c.html\">\r\n";
            text += Convert(encodings[encoding], "UTF-8", piece);
            if (random() % 8 == 0) text += static_cast<char>(random());
        }
        return text;
    };
    for (int round = 0; round < 3000; ++round) expect_same(table, own_text(round % 4));
    // Phrases that end the matter, inside a run that is taken together.
    std::size_t ended = 0;
    for (std::size_t last = 0; last < own.state_count; ++last) {
        if (VerdictOf(own.states[last].nValue) != ENCODE_UTF8) continue;
        std::string phrase;
        for (std::size_t state = last; phrase.size() < 6 && own.states[state].nCheck >= 0;) {
            const auto parent = static_cast<std::size_t>(own.states[state].nCheck);
            phrase.insert(phrase.begin(), static_cast<char>(static_cast<int>(state) - own.states[parent].nBase));
            state = parent;
        }
        const std::string text = han + "\n中国人民" + phrase + han;
        expect_same(table, text);
        ended += DetectEncoding(table, text.data(), text.size()).declared;
    }
    EXPECT_GE(ended, 20u);
    // The same with one record in 2 to 2,048 changed, so that states say other than what stands behind them.
    for (int round = 0; round < 33; ++round) {
        std::vector<_tTrieNode> states(own.states.get(), own.states.get() + own.state_count);
        for (std::size_t i = 0; i < states.size(); i += 1 + random() % (std::size_t{4} << round % 11)) {
            _tTrieNode& state = states[i];
            const auto other = random() % states.size();
            if (round % 3 == 0) state.nValue = random() % 9 == 0 ? kNeutral : static_cast<int>(random() % 0x40000);
            if (round % 3 == 1) state.nFail = static_cast<int>(random() % 2);
            if (round % 3 == 2) state = {states[other].nBase, states[other].nCheck, 0, state.nValue};
        }
        states[0].nFail = states[1].nFail = 0;
        const ScanForm form(states.data(), states.size());
        for (int texts = 0; texts < 60; ++texts)
            expect_same({states.data(), states.size(), &form}, own_text(texts % 4));
    }
    // Chains as long as can be from each state that leads on.
    std::vector<_tTrieNode> chained(300000, {0, -1, 0, kNeutral});
    const auto chain_count = static_cast<int>(chained.size());
    for (int i = 0; i + 256 < chain_count; ++i)
        chained[static_cast<std::size_t>(i) + 255] = {i, i, i + 254, kNeutral + i % 9};
    const ScanForm chained_form(chained.data(), chained.size());
    expect_same({chained.data(), chained.size(), &chained_form},
                "\xFF\xFF"
                "a" +
                    std::string(200, '\xFF'));
}

}  // namespace
