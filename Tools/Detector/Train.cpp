// detector_train: learns the scores of the encoding detector's patterns from text.
//
//     detector_train UNITS GBK_GRID BIG5_GRID CORPUS SEED [--without NAME,…] [--only NAME,…] > PATTERNS
//
// UNITS is a pattern file whose patterns with ": ?" get scores; the rest of it is copied. CORPUS is a folder as in
// Corpus.h. The same input and seed give the same output.
//
// How: the text is written in each encoding and sent through the automaton of UNITS. The share p of a pattern among all
// patterns met is its likelihood in that encoding, and a delta is kUnitsPerNat × log p, raised by what all four encodings
// have in common so that the best is kBestDelta. Differences decide the verdict; this height lets the true encoding's
// deltas be positive for nearly every pattern, as the counts of positive deltas that the detector asks for need.

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "Detector/Automaton.h"
#include "Detector/Corpus.h"

namespace {

using tools::Automaton;
using tools::Deltas;
using tools::kChannels;
using Shares = std::vector<double>;  // by state; those of the patterns to learn add up to 1

constexpr char kHeader[] =
    "# The encoding detector's patterns and what each says, learnt by `detector_train`; do not edit.\n"
    "# Origin, licences and the command that makes it anew: README.md. The form: Tools/Detector/Patterns.h.\n"
    "# Bytes: deltas for GBK, Big5, Unicode (UCS-2, low byte first) and UTF-8.\n";

constexpr double kUnitsPerNat = 2.0;
constexpr int kBestDelta = 10;
constexpr int kWorstDelta = -9;

// Likelihood of a pattern never met. It stands for damage and for text of other kinds.
constexpr double kUnseen = 2e-8;

// A pattern that little-endian UCS-2 shows at least this often says so by a positive delta, since the detector takes
// hardly any delta of 0 or less in Unicode text.
constexpr double kOrdinaryInUnicode = 1e-6;

// How much each kind of text counts. Documentation of software is most of the running text, so the words of a large mixed
// corpus weigh as much; every character of the character set, once each, stands for names and rare words.
enum Kind : std::size_t { kRunningText, kWords, kEveryCharacter, kKinds };
constexpr std::array<double, kKinds> kWeightOfKind = {0.47, 0.50, 0.03};

// How common each script is in an encoding: Simplified, Traditional.
constexpr std::array<std::array<double, 2>, kChannels> kWeightOfScript = {
    {{0.7, 0.3}, {0.0, 1.0}, {0.5, 0.5}, {0.5, 0.5}}};

// Running text made of words drawn by their frequency, with punctuation and line ends among them.
std::u16string DrawWords(const tools::TextFile& file, tools::Random& random) {
    constexpr int kDrawn = 600'000, kWordsPerMark = 7;
    constexpr std::u16string_view kMarks = u"，，，，，。。。、、：；！？“”（）《》…\n\n";
    std::vector<std::uint64_t> up_to;
    std::uint64_t total = 0;
    for (const auto& word : file.words) up_to.push_back(total += word.second);
    std::u16string text;
    for (int i = 0; i < kDrawn; ++i) {
        const auto place = std::upper_bound(up_to.begin(), up_to.end(), random.Below(total));
        text += file.words[static_cast<std::size_t>(place - up_to.begin())].first;
        if (random.Below(kWordsPerMark) == 0) text += kMarks[random.Below(kMarks.size())];
    }
    return text;
}

// Each character of the grid, several times in random order, so that each meets many neighbours.
std::u16string DrawEveryCharacter(const tools::CodeToUnicode& grid, tools::Random& random) {
    constexpr int kRounds = 20;
    std::u16string characters, text;
    for (const auto& code : grid) characters += code.second;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = characters.size(); i > 1; --i) std::swap(characters[i - 1], characters[random.Below(i)]);
        text += characters;
    }
    return text;
}

struct Source {
    Kind kind;
    bool traditional;
    std::u16string text;
};

std::vector<Source> Sources(const std::vector<tools::TextFile>& files, const tools::CodeToUnicode& gbk,
                            const tools::CodeToUnicode& big5, std::uint64_t seed) {
    tools::Random random(seed);
    std::vector<Source> sources;
    for (const bool traditional : {false, true}) {
        Source running = {kRunningText, traditional, {}};
        for (const tools::TextFile& file : files) {
            if (file.traditional != traditional) continue;
            if (file.words.empty()) {
                running.text += file.text;
            } else {
                sources.push_back({kWords, traditional, DrawWords(file, random)});
            }
        }
        sources.push_back(std::move(running));
        sources.push_back({kEveryCharacter, traditional, DrawEveryCharacter(traditional ? big5 : gbk, random)});
    }
    return sources;
}

// The shares of the patterns in one text.
Shares Count(const Automaton& automaton, const std::string& bytes) {
    const auto& states = automaton.states();
    Shares shares(states.size());
    double total = 0;
    int state = Automaton::kGround;
    for (const char c : bytes) {
        state = automaton.Step(state, static_cast<unsigned char>(c));
        if (!states[static_cast<std::size_t>(state)].learn) continue;
        ++shares[static_cast<std::size_t>(state)];
        ++total;
    }
    if (total > 0)
        for (double& share : shares) share /= total;
    return shares;
}

std::array<Shares, kChannels> CountAll(const Automaton& automaton, const std::vector<Source>& sources,
                                       const tools::Encoder& encoder) {
    std::array<Shares, kChannels> shares;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        shares[channel].resize(automaton.states().size());
        for (const Source& source : sources) {
            const double weight = kWeightOfKind[source.kind] * kWeightOfScript[channel][source.traditional];
            if (weight == 0) continue;
            const std::string bytes = encoder.Encode(static_cast<tools::Channel>(channel), source.text);
            const Shares of_source = Count(automaton, bytes);
            for (std::size_t i = 0; i < of_source.size(); ++i) shares[channel][i] += weight * of_source[i];
        }
    }
    return shares;
}

Deltas ScoreOf(const std::array<double, kChannels>& share) {
    const double best = *std::max_element(share.begin(), share.end());
    Deltas deltas{};
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const double nats = std::log((share[channel] + kUnseen) / (best + kUnseen));
        const int delta = kBestDelta + static_cast<int>(std::lround(kUnitsPerNat * nats));
        deltas[channel] = std::max(delta, kWorstDelta);
    }
    if (share[tools::kUnicodeChannel] >= kOrdinaryInUnicode)
        deltas[tools::kUnicodeChannel] = std::max(deltas[tools::kUnicodeChannel], 1);
    return deltas;
}

// Patterns that differ in the last byte only and have the same score make one line.
void PrintScores(const Automaton& automaton, const std::array<Shares, kChannels>& shares) {
    std::map<std::string, std::map<Deltas, tools::ByteClass>> lines;
    const auto& states = automaton.states();
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (!states[i].learn) continue;
        std::array<double, kChannels> share{};
        for (std::size_t channel = 0; channel < kChannels; ++channel) share[channel] = shares[channel][i];
        const Deltas deltas = ScoreOf(share);
        if (std::all_of(deltas.begin(), deltas.end(), [&](int delta) { return delta == deltas[0]; })) continue;
        std::string bytes = states[i].bytes;
        const auto last = static_cast<unsigned char>(bytes.back());
        bytes.pop_back();
        lines[bytes][deltas].set(last);
    }
    for (const auto& [bytes, scores] : lines) {
        std::map<std::string, std::string> ordered;
        for (const auto& [deltas, last] : scores) {
            tools::Pattern pattern;
            for (const char c : bytes) pattern.bytes.push_back(tools::ByteClass().set(static_cast<unsigned char>(c)));
            pattern.bytes.push_back(last);
            std::size_t first = 0;
            while (!last[first]) ++first;
            pattern.effect = tools::Effect{0, deltas};
            ordered[std::string(1, static_cast<char>(first))] = FormatPattern(pattern);
        }
        for (const auto& line : ordered) std::cout << line.second << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 6 || argc % 2 != 0) {
        std::cerr << "usage: detector_train UNITS GBK_GRID BIG5_GRID CORPUS SEED [--without NAME,…] [--only "
                     "NAME,…]\n";
        return 2;
    }
    tools::Selection selection;
    for (int i = 6; i < argc; i += 2)
        (std::string(argv[i]) == "--only" ? selection.only : selection.without) = tools::SplitList(argv[i + 1]);
    const tools::CodeToUnicode gbk = tools::ReadGrid(argv[2]), big5 = tools::ReadGrid(argv[3]);
    const std::vector<tools::Pattern> units = tools::ReadPatterns(argv[1]);
    const Automaton automaton(units);
    const auto sources = Sources(tools::ReadCorpus(argv[4], selection), gbk, big5, std::stoull(argv[5]));
    const auto shares = CountAll(automaton, sources, tools::Encoder(gbk, big5));
    std::cout << kHeader;
    for (const tools::Pattern& unit : units) std::cout << FormatPattern(unit) << '\n';
    PrintScores(automaton, shares);
    std::cout.flush();
    return std::cout.good() ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "detector_train: " << error.what() << '\n';
    return 1;
}
