#include "Detector/Scores.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "CodeTrans/CodeMaps/EncodingCodes.h"

namespace tools {

namespace {

constexpr int kBestDelta = 10;
constexpr int kWorstDelta = -9;
constexpr double kPointsPerNat = 1.2;

// Likelihood of a unit never met. It stands for damage and for text of other kinds.
constexpr double kUnseen = 2e-8;

// A unit that little-endian UCS-2 shows at least this often says so by a positive delta, since the detector takes
// hardly any delta of 0 or less in Unicode text.
constexpr double kOrdinaryInUnicode = 1e-6;

// How much the likelihood of a unit by itself counts beside what was seen behind the unit before: as much as this share
// of all units.
constexpr double kPriorShare = 1e-5;

// Phrases are less likely than this in any other encoding; those that end the matter by themselves less than that.
constexpr double kBeyondDoubt = 1e-13;
constexpr double kFarBeyondDoubt = 1e-18;

// In GBK and Big5 the same phrases open and close: together they are this share of all units, so that a page is mostly
// read to its end and a long text is not; none of them much of that, so that every kind of text has some.
constexpr double kShareOfPhrases = 1.0 / 10'000;
constexpr double kMostOfOnePhrase = 1.5e-6;

// Text in UTF-8 is read faster behind the phrase that opens than in front of it, so that there are many; and few of
// those that close.
constexpr double kShareOfUtf8Openings = 1.0 / 50;
constexpr double kShareOfUtf8Closings = 1.0 / 100'000;
constexpr double kMostOfOneUtf8Closing = 3e-7;
constexpr double kUtf8ClosingsToChooseFrom = 1.0 / 1'000;

// UCS-2 is not what a page begins or goes on with: one phrase decides.
constexpr double kShareOfUnicodePhrases = 1.0 / 1'000;

// The likelihoods as points of one height: the best channel gets kBestDelta. Differences decide the verdict; the height
// lets the true encoding's deltas be positive for nearly every unit, as the counts of positive deltas that the detector
// asks for need.
Deltas ToDeltas(const ShareByChannel& likelihood, bool ordinary_in_unicode) {
    const double best = *std::max_element(likelihood.begin(), likelihood.end());
    Deltas deltas{};
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const double nats = std::log(likelihood[channel] / best);
        deltas[channel] = std::max(kBestDelta + static_cast<int>(std::lround(kPointsPerNat * nats)), kWorstDelta);
    }
    if (ordinary_in_unicode) deltas[kUnicodeChannel] = std::max(deltas[kUnicodeChannel], 1);
    return deltas;
}

Unit FirstOfTwo(Chain chain) {
    return static_cast<Unit>(chain >> 16 & 0xFFFF);
}

Unit FirstOfThree(Chain chain) {
    return static_cast<Unit>(chain >> 32);
}

// Whether three units are two characters of three bytes in UTF-8.
bool AreTwoCharacters(Chain chain) {
    return (chain & 0xF0C0'C0F0'C0C0) == 0xE080'80E0'8080;
}

}  // namespace

std::vector<SharedChain> Merge(const CountsByChannel& counts, std::vector<CountedChain> UnitCounts::*chains) {
    std::vector<SharedChain> all;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        for (const CountedChain& item : counts[channel].*chains) {
            all.push_back({item.chain, {}});
            all.back().share[channel] = item.count;
        }
    }
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.chain < b.chain; });
    std::size_t kept = 0;
    for (const SharedChain& item : all) {
        if (kept > 0 && all[kept - 1].chain == item.chain) {
            for (std::size_t channel = 0; channel < kChannels; ++channel)
                all[kept - 1].share[channel] += item.share[channel];
        } else {
            all[kept++] = item;
        }
    }
    all.resize(kept);
    return all;
}

Scores::Scores(const CountsByChannel& counts) : counts_(counts), pairs_(Merge(counts, &UnitCounts::two)) {
    for (auto& followed : followed_) followed.resize(kUnits);
    for (const SharedChain& pair : pairs_)
        for (std::size_t channel = 0; channel < kChannels; ++channel)
            followed_[channel][FirstOfTwo(pair.chain)] += pair.share[channel];
    for (std::size_t index = 0; index < kUnits; ++index) {
        const auto unit = static_cast<Unit>(index);
        of_first_.push_back(ToDeltas(Likelihood(&UnitCounts::first, unit), IsOrdinaryInUnicode(unit)));
        of_later_.push_back(ToDeltas(Likelihood(&UnitCounts::later, unit), IsOrdinaryInUnicode(unit)));
    }
}

ShareByChannel Scores::Likelihood(std::vector<double> UnitCounts::*shares, Unit unit) const {
    ShareByChannel likelihood{};
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        likelihood[channel] = (counts_[channel].*shares)[unit] + kUnseen;
    return likelihood;
}

bool Scores::IsOrdinaryInUnicode(Unit unit) const {
    const UnitCounts& counts = counts_[kUnicodeChannel];
    return counts.first[unit] + counts.later[unit] >= kOrdinaryInUnicode;
}

ShareByChannel Scores::LikelihoodBehind(Unit before, Unit unit, const ShareByChannel& both) const {
    ShareByChannel likelihood = Likelihood(&UnitCounts::later, unit);
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        likelihood[channel] =
            (both[channel] + kPriorShare * likelihood[channel]) / (followed_[channel][before] + kPriorShare);
    return likelihood;
}

double Scores::Error(const ShareByChannel& share, const std::array<int, kChannels>& points) {
    ShareByChannel weight{};
    double all = 0;
    const int best = *std::max_element(points.begin(), points.end());
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        all += weight[channel] = std::exp((points[channel] - best) / kPointsPerNat);
    double error = 0;
    for (std::size_t channel = 0; channel < kChannels; ++channel) error += share[channel] * (1 - weight[channel] / all);
    return error;
}

std::vector<Scores::Pair> Scores::BestPairs(std::size_t most) const {
    std::vector<Pair> best;
    for (const SharedChain& pair : pairs_) {
        const Unit before = FirstOfTwo(pair.chain), unit = LastOf(pair.chain);
        const Deltas deltas = ToDeltas(LikelihoodBehind(before, unit, pair.share), IsOrdinaryInUnicode(unit));
        std::array<int, kChannels> points{}, points_apart{};
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            points[channel] = of_first_[before][channel] + deltas[channel];
            points_apart[channel] = of_first_[before][channel] + of_later_[unit][channel];
        }
        const double gain = Error(pair.share, points_apart) - Error(pair.share, points);
        if (gain > 0) best.push_back({pair.chain, deltas, gain});
    }
    std::stable_sort(best.begin(), best.end(), [](const Pair& a, const Pair& b) { return a.gain > b.gain; });
    if (best.size() > most) best.resize(most);
    return best;
}

Deltas Scores::MeanInUtf8(const ByteClass& first, const ByteClass& second) const {
    std::array<double, kChannels> sum{};
    double share = 0;
    for (std::size_t index = 0; index < kUnits; ++index) {
        if (!first[index >> 8] || !second[index & 0xFF]) continue;
        const double of_unit = counts_[kUtf8Channel].later[index];
        for (std::size_t channel = 0; channel < kChannels; ++channel)
            sum[channel] += of_unit * of_later_[index][channel];
        share += of_unit;
    }
    Deltas mean{};
    for (std::size_t channel = 0; share > 0 && channel < kChannels; ++channel)
        mean[channel] = static_cast<int>(std::lround(sum[channel] / share));
    return mean;
}

// How likely a chain of units is in the encoding if they have nothing to do with each other.
double Scores::Chance(std::size_t channel, Chain chain) const {
    double chance = 1;
    for (; chain != 0; chain >>= 16) {
        const Unit unit = LastOf(chain);
        chance *= std::max(counts_[channel].first[unit], counts_[channel].later[unit]) + kUnseen;
    }
    return chance;
}

std::vector<CountedChain> Scores::BeyondDoubt(std::size_t channel, double share, double most_of_one,
                                              double chance) const {
    std::vector<CountedChain> chains;
    for (const CountedChain& item : counts_[channel].three) {
        bool beyond_doubt = item.count <= most_of_one && (channel != kUtf8Channel || AreTwoCharacters(item.chain));
        for (std::size_t other = 0; other < kChannels; ++other)
            if (other != channel && Chance(other, item.chain) > chance) beyond_doubt = false;
        if (beyond_doubt) chains.push_back(item);
    }
    std::stable_sort(chains.begin(), chains.end(), [](const CountedChain& a, const CountedChain& b) {
        return std::pair(a.texts, a.count) > std::pair(b.texts, b.count);
    });
    std::size_t taken = 0;
    for (; taken < chains.size() && share > 0; ++taken) share -= chains[taken].count;
    chains.resize(taken);
    return chains;
}

// Those whose first units are rarest beside the phrases that begin with them: each such unit stops a fast scan.
std::vector<CountedChain> Scores::ThatRarelyBegin(std::vector<CountedChain> chains, double share) const {
    std::map<Unit, double> weight;
    for (const CountedChain& item : chains) weight[FirstOfThree(item.chain)] += item.count;
    for (auto& [unit, value] : weight)
        value /= counts_[kUtf8Channel].first[unit] + counts_[kUtf8Channel].later[unit] + kUnseen;
    std::stable_sort(chains.begin(), chains.end(), [&](const CountedChain& a, const CountedChain& b) {
        const Unit first_of_a = FirstOfThree(a.chain), first_of_b = FirstOfThree(b.chain);
        return std::pair(weight[first_of_a], first_of_a) > std::pair(weight[first_of_b], first_of_b);
    });
    std::size_t taken = 0;
    for (; taken < chains.size() && share > 0; ++taken) share -= chains[taken].count;
    chains.resize(taken);
    return chains;
}

std::vector<Scores::Phrase> Scores::OpeningPhrases() const {
    std::vector<Phrase> phrases;
    for (const Phrase& phrase : ClosingPhrases())
        if (phrase.verdict != ENCODE_UTF8) phrases.push_back(phrase);
    for (const CountedChain& item : BeyondDoubt(kUtf8Channel, kShareOfUtf8Openings, 1, kBeyondDoubt))
        phrases.push_back({item.chain, ENCODE_UTF8});
    return phrases;
}

std::vector<Scores::Phrase> Scores::ClosingPhrases() const {
    std::vector<Phrase> phrases;
    for (const CountedChain& item : BeyondDoubt(kGbkChannel, kShareOfPhrases, kMostOfOnePhrase, kBeyondDoubt))
        phrases.push_back({item.chain, ENCODE_GBK});
    for (const CountedChain& item : BeyondDoubt(kBig5Channel, kShareOfPhrases, kMostOfOnePhrase, kBeyondDoubt))
        phrases.push_back({item.chain, ENCODE_BIG5});
    for (const CountedChain& item :
         ThatRarelyBegin(BeyondDoubt(kUtf8Channel, kUtf8ClosingsToChooseFrom, kMostOfOneUtf8Closing, kBeyondDoubt),
                         kShareOfUtf8Closings))
        phrases.push_back({item.chain, ENCODE_UTF8});
    return phrases;
}

std::vector<Scores::Phrase> Scores::DecidingPhrases() const {
    std::vector<Phrase> phrases;
    for (const CountedChain& item : BeyondDoubt(kUnicodeChannel, kShareOfUnicodePhrases, 1, kFarBeyondDoubt))
        phrases.push_back({item.chain, ENCODE_UNICODE});
    return phrases;
}

}  // namespace tools
