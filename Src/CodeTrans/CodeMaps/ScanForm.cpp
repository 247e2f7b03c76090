#include "CodeTrans/CodeMaps/ScanForm.h"

namespace utility::internal {

// The state that each one goes on as: the first of its failure chain that leads anywhere, or the root. Chains share their
// ends, and each is walked only as far as that is not known yet.
std::vector<std::uint32_t> ScanForm::Resumed(const States& states) {
    const std::size_t count = states.count;
    std::vector<bool> leads(count);
    leads[0] = true;  // where chains end
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t parent = states.at[i].nCheck;
        if (parent < 0 || static_cast<std::size_t>(parent) >= count) continue;
        const std::int64_t byte = static_cast<std::int64_t>(i) - states.at[parent].nBase;
        if (byte >= 0 && byte < 256) leads[static_cast<std::size_t>(parent)] = true;
    }
    constexpr auto kUnknown = static_cast<std::uint32_t>(-1);
    std::vector<std::uint32_t> resumed(count, kUnknown);
    std::vector<std::size_t> chain;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t state = i;
        for (; !leads[state] && resumed[state] == kUnknown; state = states.Fallback(state)) chain.push_back(state);
        const std::uint32_t found = leads[state] ? static_cast<std::uint32_t>(state) : resumed[state];
        resumed[state] = found;
        for (; !chain.empty(); chain.pop_back()) resumed[chain.back()] = found;
    }
    return resumed;
}

ScanForm::ScanForm(const States& states, const std::vector<std::uint32_t>& resumed)
    : records_(states.count), links_(states.count), units_(states, resumed) {
    const auto at = [&](std::size_t state) { return ScanState{resumed[state], states.at[resumed[state]].nBase}; };
    for (std::size_t i = 0; i < states.count; ++i) {
        const std::int32_t parent = states.at[i].nCheck;
        records_[i] = {parent >= 0 ? static_cast<std::uint32_t>(parent) : kNoState, at(i),
                       ScoreOf(states.at[i].nValue)};
        links_[i] = at(states.Fallback(i));
    }
}

}  // namespace utility::internal
