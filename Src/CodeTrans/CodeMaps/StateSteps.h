#ifndef UTILITY_CODETRANS_STATESTEPS_H
#define UTILITY_CODETRANS_STATESTEPS_H

// What the states of an automaton do by themselves, for whatever is made of them at load.

#include <cstddef>
#include <cstdint>

#include "CodeTrans/CodeMaps/DataFile.h"

namespace utility::internal {

// The four deltas of a value as one word, so that a few additions count all of them: a byte for each channel, the
// delta + kScoreOffset. 0 without a score. From kVerdict on the 12 bits of a verdict.
using Score = std::uint32_t;
constexpr Score kVerdict = 0xFFFFF000u;
constexpr int kScoreOffset = 10;

inline Score ScoreOf(std::int32_t value) {
    if (value == kNeutralValue) return 0;
    if (VerdictOf(value) != 0) return kVerdict | (static_cast<Score>(VerdictOf(value)) & 0xFFF);
    Score score = 0;
    const auto deltas = DeltasOf(value);
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        score |= static_cast<Score>(deltas[channel] + kScoreOffset) << 8 * channel;
    return score;
}

// States of which every failure link leads to the root.
struct States {
    const _tTrieNode* at;
    std::size_t count;
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The record that `state` leads to on `byte` by itself, or kNone. As a signed sum: a negative base may lead back
    // into the table.
    std::size_t Child(std::size_t state, unsigned byte) const {
        const auto next = static_cast<std::size_t>(std::ptrdiff_t{at[state].nBase} + static_cast<std::ptrdiff_t>(byte));
        return next < count && at[next].nCheck >= 0 && static_cast<std::size_t>(at[next].nCheck) == state ? next
                                                                                                          : kNone;
    }
    std::size_t Fallback(std::size_t state) const { return static_cast<std::size_t>(at[state].nFail); }

    // The record that a text enters from `state` with `byte`; kNone if the root knows nothing of the byte, which leaves
    // a text there.
    std::size_t Step(std::size_t state, unsigned byte) const {
        for (;; state = Fallback(state)) {
            const std::size_t next = Child(state, byte);
            if (next != kNone || state == 0) return next;
        }
    }
};

}  // namespace utility::internal

#endif
