#ifndef UTILITY_CODETRANS_SCANFORM_H
#define UTILITY_CODETRANS_SCANFORM_H

// The automaton in the form that detection runs on, made when a data file is loaded: the same states, transitions and
// values, with everything that a text may make the scan ask for worked out beforehand.
//
// - A state that leads nowhere hands every byte on to the state it falls back to. So a transition into it goes on to the
//   first state of its failure chain that leads anywhere, and failure links pass over such states.
// - The four deltas of a value are one word of four bytes, so that a few additions count all of them.
// - Text of printable ASCII often means nothing: whatever the last byte was, each leads to a state of its own without a
//   score. Where the automaton is like that, the scan skips such text in words.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "CodeTrans/CodeMaps/DataFile.h"

namespace utility::internal {

// A state to go on from: its number, with the top bit set if it is one of those that printable ASCII leads to, and its nBase.
struct ScanState {
    static constexpr std::uint32_t kPlain = 0x80000000u;

    std::uint32_t number = 0;
    std::int32_t base = 0;

    bool plain() const { return (number & kPlain) != 0; }
};

class ScanForm {
public:
    struct Record {
        std::uint32_t check;  // the state that has a transition here, kNoState for none
        ScanState next;
        // A byte for each channel: the delta + 10. 0 without a score. From kVerdict on the 12 bits of a verdict.
        std::uint32_t score;
    };
    static constexpr std::uint32_t kNoState = 0xFFFFFFFFu;
    static constexpr std::uint32_t kVerdict = 0xFFFFF000u;
    static constexpr int kScoreOffset = 10;
    // States that the form can number.
    static constexpr std::size_t kMostStates = ScanState::kPlain;

    // Every failure link of the states leads to the root; there is one state at least, and kMostStates at most. Throws std::bad_alloc.
    ScanForm(const _tTrieNode* states, std::size_t count);

    std::size_t count() const { return records_.size(); }
    const Record& record(std::size_t index) const { return records_[index]; }
    // Where a state that has no transition falls back to.
    const ScanState& link(const ScanState& state) const { return links_[state.number & ~ScanState::kPlain]; }
    ScanState root() const { return root_; }
    // The state behind a byte 20 to 7F of printable ASCII that was skipped.
    const ScanState& after_plain(unsigned char byte) const { return after_plain_[byte - 0x20u]; }

private:
    void FindPlainStates(const _tTrieNode* states);

    std::vector<Record> records_;
    std::vector<ScanState> links_;
    ScanState root_;
    ScanState after_plain_[0x60];
};

}  // namespace utility::internal

#endif
