#ifndef UTILITY_TOOLS_AUTOMATON_H
#define UTILITY_TOOLS_AUTOMATON_H

// The detector's automaton, from patterns to the records of the data file.
//
// State 0, the root, is where a text starts and is never seen again: it leads on every byte to states that know the
// start of the text, and these fall back to the states of the middle. State 1, the ground, is where the middle of a
// text goes on between patterns; it leads on every byte, too, and is entered by failure links only. So no state falls
// back to the root, and a byte-order mark inside a text means nothing. A byte that no pattern begins with leads from
// the ground to a state without score or transitions that falls back to the ground: a scan may skip it.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "Detector/Patterns.h"

namespace tools {

using Records = std::vector<utility::internal::_tTrieNode>;

class Automaton {
public:
    static constexpr int kRoot = 0, kGround = 1;

    struct State {
        std::string bytes;  // that lead here from the root (at_start) or the ground
        bool at_start = false;
        Effect effect;
        int fallback = kGround;
        std::map<unsigned char, int> next;
    };

    // Throws std::runtime_error on patterns that contradict each other or fall back to a pattern that is none.
    explicit Automaton(const std::vector<Pattern>& patterns);

    const std::vector<State>& states() const { return states_; }

    // The state after one more byte.
    int Step(int state, unsigned char byte) const;

    // The state after `bytes` in the middle of a text.
    int Walk(std::string_view bytes) const;

    // The double array; `record_of` gets the record of each state.
    Records Pack(std::vector<int>& record_of) const;

private:
    int Child(int state, unsigned char byte);
    void Add(const Pattern& pattern);
    int Find(const std::string& bytes) const;
    int UsefulFallback(const State& state) const;
    bool FallsBackTo(int state, int target) const;
    void LinkMiddle(const std::map<int, std::string>& chosen);
    void LinkStart();

    std::vector<State> states_;
    std::map<int, std::string> chosen_fallbacks_;
    std::vector<bool> has_effect_;
};

// What is wrong with a table of records, one line a fault, in words; empty when it is sound.
std::vector<std::string> FindFaults(const Records& records);

}  // namespace tools

#endif
