#include "Detector/Units.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace tools {

namespace {

std::vector<CountedChain> Count(std::vector<Chain>& chains) {
    std::sort(chains.begin(), chains.end());
    std::vector<CountedChain> counted;
    for (const Chain chain : chains) {
        if (counted.empty() || counted.back().chain != chain) counted.push_back({chain, 0});
        ++counted.back().count;
    }
    return counted;
}

// Merges the chains from `middle` on, in order like those before, and joins equal ones.
template <typename Join>
void MergeAndJoin(std::vector<CountedChain>& chains, std::size_t middle, const Join& join) {
    std::inplace_merge(chains.begin(), chains.begin() + static_cast<std::ptrdiff_t>(middle), chains.end(),
                       [](const CountedChain& a, const CountedChain& b) { return a.chain < b.chain; });
    std::size_t kept = 0;
    for (const CountedChain& item : chains) {
        if (kept > 0 && chains[kept - 1].chain == item.chain) {
            chains[kept - 1].count = join(chains[kept - 1].count, item.count);
            chains[kept - 1].texts += item.texts;
        } else {
            chains[kept++] = item;
        }
    }
    chains.resize(kept);
}

void Append(std::vector<CountedChain>& sum, const std::vector<CountedChain>& more, double factor) {
    const std::size_t middle = sum.size();
    for (const CountedChain& item : more) sum.push_back({item.chain, item.count * factor, item.texts});
    MergeAndJoin(sum, middle, std::plus<>());
}

void Raise(std::vector<CountedChain>& chains, const std::vector<CountedChain>& other) {
    const std::size_t middle = chains.size();
    chains.insert(chains.end(), other.begin(), other.end());
    MergeAndJoin(chains, middle, [](double a, double b) { return std::max(a, b); });
}

}  // namespace

UnitCounts::UnitCounts(std::string_view bytes) : first(kUnits), later(kUnits) {
    constexpr Chain kOne = 0xFFFF, kTwo = 0xFFFFFFFF;
    std::vector<Chain> pairs, triples;
    ForEachUnit(bytes, [&](Chain chain) {
        if (chain <= kOne) return;
        ++later[LastOf(chain)];
        pairs.push_back(chain & kTwo);
        if (chain > kTwo) triples.push_back(chain);
    });
    two = Count(pairs);
    three = Count(triples);
}

void UnitCounts::CountFirst(std::string_view bytes) {
    for (std::size_t pos = 0; pos < bytes.size(); ++pos) {
        const auto byte = static_cast<unsigned char>(bytes[pos]);
        if (byte < 0x80 && !IsOddControl(byte)) continue;
        ForEachUnit(bytes.substr(pos, 2), [&](Chain chain) { ++first[LastOf(chain)]; });
        return;
    }
}

void UnitCounts::AddShares(const UnitCounts& text, double weight) {
    const auto add = [&](std::vector<double>& sum, const std::vector<double>& more) {
        const double total = std::accumulate(more.begin(), more.end(), 0.0);
        for (std::size_t unit = 0; total > 0 && unit < kUnits; ++unit) sum[unit] += more[unit] * (weight / total);
        return total;
    };
    add(first, text.first);
    const double total = add(later, text.later);
    if (total == 0) return;
    Append(two, text.two, weight / total);
    Append(three, text.three, weight / total);
}

void UnitCounts::RaiseTo(const UnitCounts& other) {
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
        first[unit] = std::max(first[unit], other.first[unit]);
        later[unit] = std::max(later[unit], other.later[unit]);
    }
    Raise(two, other.two);
    Raise(three, other.three);
}

}  // namespace tools
