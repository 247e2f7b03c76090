#include "CodeTrans/CodeMaps/ScanForm.h"

namespace utility::internal {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::uint32_t ScoreOf(std::int32_t value) {
    if (value == kNeutralValue) return 0;
    if (VerdictOf(value) != 0) return ScanForm::kVerdict | (static_cast<std::uint32_t>(VerdictOf(value)) & 0xFFF);
    std::uint32_t score = 0;
    const auto deltas = DeltasOf(value);
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        score |= static_cast<std::uint32_t>(deltas[channel] + ScanForm::kScoreOffset) << 8 * channel;
    return score;
}

// The record that `state` leads to on `byte` by itself, or kNone.
std::size_t Child(const _tTrieNode* states, std::size_t count, std::size_t state, unsigned byte) {
    const auto next = static_cast<std::size_t>(std::ptrdiff_t{states[state].nBase} + static_cast<std::ptrdiff_t>(byte));
    return next < count && states[next].nCheck >= 0 && static_cast<std::size_t>(states[next].nCheck) == state ? next
                                                                                                              : kNone;
}

// The record that a text leads to from `state` with `byte`, or the root.
std::size_t Step(const _tTrieNode* states, std::size_t count, std::size_t state, unsigned byte) {
    for (;;) {
        const std::size_t next = Child(states, count, state, byte);
        if (next != kNone) return next;
        if (state == 0) return 0;
        state = static_cast<std::size_t>(states[state].nFail);
    }
}

}  // namespace

ScanForm::ScanForm(const _tTrieNode* states, std::size_t count) : records_(count), links_(count) {
    std::vector<bool> leads(count);
    leads[0] = true;  // where chains end
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t parent = states[i].nCheck;
        if (parent < 0 || static_cast<std::size_t>(parent) >= count) continue;
        const std::int64_t byte = static_cast<std::int64_t>(i) - states[parent].nBase;
        if (byte >= 0 && byte < 256) leads[static_cast<std::size_t>(parent)] = true;
    }
    // The first state of each chain that leads anywhere. Chains share their ends, and each is walked only as far as that is
    // not known yet.
    std::vector<std::uint32_t> resumed(count, static_cast<std::uint32_t>(-1));
    std::vector<std::size_t> chain;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t state = i;
        for (; !leads[state] && resumed[state] == static_cast<std::uint32_t>(-1);
             state = static_cast<std::size_t>(states[state].nFail))
            chain.push_back(state);
        const std::uint32_t found = leads[state] ? static_cast<std::uint32_t>(state) : resumed[state];
        resumed[state] = found;
        for (; !chain.empty(); chain.pop_back()) resumed[chain.back()] = found;
    }
    const auto at = [&](std::size_t state) { return ScanState{resumed[state], states[resumed[state]].nBase}; };
    for (std::size_t i = 0; i < count; ++i) {
        const bool entered = states[i].nCheck >= 0;
        records_[i] = {entered ? static_cast<std::uint32_t>(states[i].nCheck) : kNoState, at(i),
                       ScoreOf(states[i].nValue)};
        links_[i] = at(static_cast<std::size_t>(states[i].nFail));
    }
    root_ = at(0);
    FindPlainStates(states);
}

// Text of printable ASCII may be skipped where, behind any byte of it, each leads to one and the same state, which has no
// score. The two steps from the root get past what a pattern may say about the start of a text.
void ScanForm::FindPlainStates(const _tTrieNode* states) {
    constexpr unsigned kFirst = 0x20, kBytes = 0x60;
    const std::size_t somewhere = Step(states, count(), Step(states, count(), 0, kFirst), kFirst);
    std::size_t behind[kBytes];
    for (unsigned byte = 0; byte < kBytes; ++byte) {
        behind[byte] = Step(states, count(), somewhere, kFirst + byte);
        if (states[behind[byte]].nValue != kNeutralValue) return;
    }
    for (const std::size_t state : behind)
        for (unsigned byte = 0; byte < kBytes; ++byte)
            if (Step(states, count(), state, kFirst + byte) != behind[byte]) return;
    for (unsigned byte = 0; byte < kBytes; ++byte) {
        after_plain_[byte] = records_[behind[byte]].next;
        after_plain_[byte].number |= ScanState::kPlain;
        records_[behind[byte]].next.number |= ScanState::kPlain;
    }
}

}  // namespace utility::internal
