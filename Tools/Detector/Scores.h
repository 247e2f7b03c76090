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
    // What units of the two bytes say behind another in UTF-8, on average.
    Deltas MeanInUtf8(const ByteClass& first, const ByteClass& second) const;

    // Chains of three that are in texts of many kinds in one encoding, and so far from what the others hold that
    // nothing speaks against it. The first opening one in a text tells how it is scored from there on; the first
    // closing one behind that, common enough for long texts to have some, ends the matter. Those for UTF-8 are two
    // characters of three bytes. UCS-2 has deciding phrases instead, each of which ends the matter by itself.
    std::vector<Phrase> OpeningPhrases() const;
    std::vector<Phrase> ClosingPhrases() const;
    std::vector<Phrase> DecidingPhrases() const;

private:
    ShareByChannel Likelihood(std::vector<double> UnitCounts::*shares, Unit unit) const;
    bool IsOrdinaryInUnicode(Unit unit) const;
    ShareByChannel LikelihoodBehind(Unit before, Unit unit, const ShareByChannel& both) const;
    double Chance(std::size_t channel, Chain chain) const;
    // The share of texts whose encoding the points of the channels do not tell.
    static double Error(const ShareByChannel& share, const std::array<int, kChannels>& points);
    // As many as make up `share` of all units, none of them more than `most_of_one`, from those in most texts on.
    std::vector<CountedChain> BeyondDoubt(std::size_t channel, double share, double most_of_one, double chance) const;
    std::vector<CountedChain> ThatRarelyBegin(std::vector<CountedChain> chains, double share) const;

    const CountsByChannel& counts_;
    std::vector<SharedChain> pairs_;
    std::array<std::vector<double>, kChannels> followed_;  // by unit: the share of chains of two that begin with it
    std::vector<Deltas> of_first_, of_later_;
};

}  // namespace tools

#endif
