#ifndef UTILITY_TOOLS_SCORES_H
#define UTILITY_TOOLS_SCORES_H

// From how often each encoding shows a unit to what the unit says.

#include <array>
#include <unordered_map>
#include <vector>

#include "Detector/Patterns.h"
#include "Detector/Units.h"

namespace tools {

using CountsByChannel = std::array<UnitCounts, kChannels>;
using ShareByChannel = std::array<double, kChannels>;

// The chains of two, or of three, of all encodings, in order.
struct SharedChain {
    Chain chain;
    ShareByChannel share{};
};
std::vector<SharedChain> Merge(const CountsByChannel& counts, std::vector<CountedChain> UnitCounts::*chains);

class Scores {
public:
    explicit Scores(const CountsByChannel& counts);

    // Of a unit that is the first, and of one right behind another. All the same where the unit tells nothing.
    const Deltas& OfFirst(Unit unit) const { return of_first_[unit]; }
    const Deltas& OfLater(Unit unit) const { return of_later_[unit]; }

    struct Pair {
        Chain chain;
        Deltas deltas;  // of the second unit behind the first
        double gain;    // the share of texts of these two units that the deltas put right
    };
    // The chains of two that help most, the best first.
    std::vector<Pair> BestPairs(std::size_t most) const;

    struct Phrase {
        Chain chain;
        int verdict;
    };
    // Chains of three that are common enough in one encoding, and in texts of many kinds, for two of them to end the
    // matter for good, and so far from what the others hold that nothing speaks against it.
    std::vector<Phrase> Phrases() const;

private:
    ShareByChannel Likelihood(std::vector<double> UnitCounts::*shares, Unit unit) const;
    bool IsOrdinaryInUnicode(Unit unit) const;
    ShareByChannel LikelihoodBehind(Unit before, Unit unit, const ShareByChannel& both) const;
    double Chance(std::size_t channel, Chain chain) const;
    // The share of texts whose encoding the points of the channels do not tell.
    static double Error(const ShareByChannel& share, const std::array<int, kChannels>& points);

    const CountsByChannel& counts_;
    std::vector<SharedChain> pairs_;
    std::array<std::vector<double>, kChannels> followed_;  // by unit: the share of chains of two that begin with it
    std::vector<Deltas> of_first_, of_later_;
};

}  // namespace tools

#endif
