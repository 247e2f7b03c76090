#ifndef UTILITY_CODETRANS_SCANFORM_H
#define UTILITY_CODETRANS_SCANFORM_H

// The automaton in the form that detection runs on, made when a data file is loaded: the same states, transitions and
// values, with everything that a text may make the scan ask for worked out beforehand.
//
// - A state that leads nowhere hands every byte on to the state it falls back to. So a transition into it goes on to the
//   first state of its failure chain that leads anywhere, and failure links pass over such states.
// - Scores are words that a few additions count.
// - Most of a text is taken by other tables, a unit of one or two bytes at a time; see UnitForm.h.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "CodeTrans/CodeMaps/StateSteps.h"
#include "CodeTrans/CodeMaps/UnitForm.h"

namespace utility::internal {

// A state to go on from: its number and its nBase.
struct ScanState {
    std::uint32_t number = 0;
    std::int32_t base = 0;
};

class ScanForm {
public:
    struct Record {
        std::uint32_t check;  // the state that has a transition here, kNoState for none
        ScanState next;
        Score score;
    };
    static constexpr std::uint32_t kNoState = 0xFFFFFFFFu;
    // States that the form can number.
    static constexpr std::size_t kMostStates = 0x80000000u;

    // Every failure link of the states leads to the root; there is one state at least, and kMostStates at most. Throws std::bad_alloc.
    ScanForm(const _tTrieNode* states, std::size_t count) : ScanForm(States{states, count}, Resumed({states, count})) {}

    std::size_t count() const { return records_.size(); }
    const Record& record(std::size_t index) const { return records_[index]; }
    // Where a state that has no transition falls back to.
    const ScanState& link(const ScanState& state) const { return links_[state.number]; }
    // One that units() gives.
    const ScanState& state(std::uint32_t number) const { return records_[number].next; }
    const UnitForm& units() const { return units_; }

private:
    ScanForm(const States& states, const std::vector<std::uint32_t>& resumed);
    static std::vector<std::uint32_t> Resumed(const States& states);

    std::vector<Record> records_;
    std::vector<ScanState> links_;
    UnitForm units_;
};

}  // namespace utility::internal

#endif
