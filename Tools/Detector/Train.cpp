// detector_train: learns from text what the encoding detector's patterns say.
//
//     detector_train RULES GBK_GRID BIG5_GRID CORPUS SEED [--without NAME,…] [--only NAME,…] [--pairs 60000]
//         > PATTERNS
//
// RULES is a pattern file that is copied to the front. CORPUS is a folder as in Corpus.h. The same input and seed give
// the same output.
//
// How: samples of the text (Samples.h) are written in each encoding and cut into units (Units.h). The share of a unit
// among all units, or behind the unit before it, is its likelihood in that encoding, and the logarithm of it, in
// points, its delta (Scores.h). Every unit that tells anything has a pattern; chains of two have one where they tell
// more than their units do. A few chains of three, each beyond doubt in one encoding, open the way to a simpler
// scoring, and to others that end the matter.

#include <algorithm>
#include <array>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Detector/Corpus.h"
#include "Detector/Samples.h"
#include "Detector/Scores.h"

namespace {

using tools::Chain;
using tools::Effect;
using tools::kChannels;
using tools::Unit;

constexpr char kHeader[] =
    "# The encoding detector's patterns and what each says, learnt by `detector_train`; do not edit.\n"
    "# Origin, licences and the command that makes it anew: README.md. The form: Tools/Detector/Patterns.h.\n"
    "# Bytes: deltas for GBK, Big5, Unicode (UCS-2, low byte first) and UTF-8.\n";

// Where RULES has the units that stand right behind another: behind bytes that no Chinese text holds.
constexpr char kBehindAnother[] = "\x80\xFF";

// One line in so many loses its first byte, as where a text begins inside a character.
constexpr std::uint64_t kLinesPerCut = 100;

constexpr Chain kTwoUnits = 0xFFFFFFFF;

// The first unit of a text stands within so many bytes, or does not matter.
constexpr std::size_t kLongestStart = 8;

std::string CutLines(const std::string& bytes, tools::Random& random) {
    std::string cut;
    for (std::size_t pos = 0; pos < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', pos), bytes.size() - 1) + 1;
        const std::size_t from = random.Below(kLinesPerCut) == 0 ? pos + 1 : pos;
        cut.append(bytes, from, end - from);
        pos = end;
    }
    return cut;
}

std::size_t CharacterLength(tools::Channel encoding, unsigned char first) {
    if (encoding == tools::kUnicodeChannel) return 2;
    if (first < 0x80) return 1;
    if (encoding != tools::kUtf8Channel) return 2;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// As if the text began at each of its characters.
void CountFirsts(tools::Channel encoding, std::string_view bytes, tools::UnitCounts& counts) {
    while (!bytes.empty()) {
        counts.CountFirst(bytes.substr(0, kLongestStart));
        bytes.remove_prefix(std::min(CharacterLength(encoding, static_cast<unsigned char>(bytes[0])), bytes.size()));
    }
}

// A text is all of one script or of the other, so the higher share of the two is what counts.
tools::CountsByChannel CountAll(const std::vector<tools::Sample>& samples, const tools::Encoder& encoder,
                                std::uint64_t seed) {
    tools::CountsByChannel counts;
    tools::Random random(seed);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        std::array<tools::UnitCounts, 2> of_script;
        for (const tools::Sample& sample : samples) {
            if (channel == tools::kBig5Channel && !sample.traditional) continue;
            if (channel != tools::kUtf8Channel && sample.utf8_only) continue;
            std::string bytes = encoder.Encode(static_cast<tools::Channel>(channel), sample.text);
            if (channel != tools::kUnicodeChannel) bytes = CutLines(bytes, random);
            tools::UnitCounts text(bytes);
            CountFirsts(static_cast<tools::Channel>(channel), bytes, text);
            of_script[sample.traditional].AddShares(text, sample.share);
        }
        counts[channel] = std::move(of_script[0]);
        counts[channel].RaiseTo(of_script[1]);
    }
    return counts;
}

// Patterns of bytes and their effects, printed with those in one line that differ in the last byte only.
class PatternPrinter {
public:
    void Add(std::string bytes, const Effect& effect, const std::string& fallback = {}) {
        const auto last = static_cast<unsigned char>(bytes.back());
        bytes.pop_back();
        lines_[bytes][{effect.verdict, effect.deltas, fallback}].set(last);
    }
    // With `front` in front of the bytes of each.
    void Print(std::ostream& out, const std::vector<tools::ByteClass>& front = {}) const {
        for (const auto& [bytes, effects] : lines_) {
            for (const auto& [effect, last] : effects) {
                const auto& [verdict, deltas, fallback] = effect;
                tools::Pattern pattern;
                pattern.bytes = front;
                for (const char c : bytes)
                    pattern.bytes.push_back(tools::ByteClass().set(static_cast<unsigned char>(c)));
                pattern.bytes.push_back(last);
                pattern.effect = Effect{verdict, deltas};
                if (!fallback.empty()) pattern.fallback = fallback;
                out << FormatPattern(pattern) << '\n';
            }
        }
    }

private:
    std::map<std::string, std::map<std::tuple<int, tools::Deltas, std::string>, tools::ByteClass>> lines_;
};

std::string BytesOfChain(Chain chain) {
    return (chain > 0xFFFF ? BytesOfChain(chain >> 16) : "") + tools::BytesOf(tools::LastOf(chain));
}

// Where RULES has what follows a phrase of the encoding.
std::string BehindPhrase(int verdict) {
    return std::string("\xFF\xFF") + static_cast<char>(verdict);
}

bool Tells(const tools::Deltas& deltas) {
    return std::any_of(deltas.begin(), deltas.end(), [&](int delta) { return delta != deltas[0]; });
}

// As points in steps of a few, so that many units say the same.
tools::Deltas InSteps(tools::Deltas deltas) {
    constexpr int kStep = 4, kBest = 10, kWorst = -9;
    for (int& delta : deltas) delta = std::max(kBest - (kBest - delta + kStep / 2) / kStep * kStep, kWorst);
    return deltas;
}

// How UTF-8 goes on behind its first phrase: in the ring of two characters of three bytes that RULES has, each of its
// units says what such units say on average. Another unit says what it says elsewhere.
class Utf8Ring {
public:
    explicit Utf8Ring(const tools::Scores& scores) {
        tools::ByteClass lead, trail;
        for (unsigned byte = 0x80; byte < 0xC0; ++byte) trail.set(byte);
        for (unsigned byte = 0xE1; byte <= 0xEF; ++byte) lead.set(byte, byte != 0xED);
        units_ = {{{"\xFF\xFF\x01", lead, trail}, {"\xFF\xFF\x11", trail, lead}, {"\xFF\xFF\x21", trail, trail}}};
        for (auto& unit : units_) unit.deltas = scores.MeanInUtf8(unit.first, unit.second);
    }
    void Print(std::ostream& out) const {
        for (const auto& unit : units_) {
            tools::Pattern pattern;
            for (const char c : unit.from)
                pattern.bytes.push_back(tools::ByteClass().set(static_cast<unsigned char>(c)));
            pattern.bytes.insert(pattern.bytes.end(), {unit.first, unit.second});
            pattern.effect = Effect{0, unit.deltas};
            out << FormatPattern(pattern) << '\n';
        }
    }
    // A phrase that ends the matter, with what stands on the way to it.
    void AddClosing(Chain chain, PatternPrinter& printer) const {
        printer.Add(BytesOfChain(chain >> 32), {0, units_[0].deltas}, units_[1].from);
        printer.Add(BytesOfChain(chain >> 16), {0, units_[1].deltas}, units_[2].from);
        printer.Add(BytesOfChain(chain), {ENCODE_UTF8, {}});
    }

private:
    struct RingUnit {
        std::string from;  // what comes behind which
        tools::ByteClass first, second;
        tools::Deltas deltas{};
    };
    std::array<RingUnit, 3> units_;
};

// Behind the first phrase of an encoding: units go on to count one by one, in steps, which is as good for the long
// texts that get there, and a closing phrase of that encoding is the verdict.
void PrintBehindPhrases(const tools::Scores& scores) {
    constexpr unsigned kLowestTrail = 0x40;  // of GBK and Big5
    const auto ff = tools::ByteClass().set(0xFF);
    const Utf8Ring ring(scores);
    std::map<int, PatternPrinter> of_verdict;
    for (const auto& phrase : scores.ClosingPhrases()) {
        PatternPrinter& printer = of_verdict[phrase.verdict];
        if (phrase.verdict == ENCODE_UTF8) {
            ring.AddClosing(phrase.chain, printer);
        } else {
            const Chain way = phrase.chain >> 16;
            printer.Add(BytesOfChain(way), {0, InSteps(scores.OfLater(tools::LastOf(way)))});
            printer.Add(BytesOfChain(phrase.chain), {phrase.verdict, {}});
        }
    }
    PatternPrinter units;
    for (unsigned index = 0; index < tools::kUnits; ++index) {
        const auto unit = static_cast<Unit>(index);
        const tools::Deltas deltas = InSteps(scores.OfLater(unit));
        if ((unit & 0xFF) >= kLowestTrail && Tells(deltas)) units.Add(tools::BytesOf(unit), {0, deltas});
    }
    units.Print(std::cout, {ff, ff, tools::ByteClass().set(ENCODE_UTF8).set(ENCODE_GBK).set(ENCODE_BIG5)});
    ring.Print(std::cout);
    for (const auto& [verdict, printer] : of_verdict)
        printer.Print(std::cout, {ff, ff, tools::ByteClass().set(static_cast<std::size_t>(verdict))});
}

void PrintScores(const tools::Scores& scores, std::size_t most_pairs) {
    const auto pairs = scores.BestPairs(most_pairs);
    const auto phrases = scores.OpeningPhrases();
    PatternPrinter printer;
    for (unsigned index = 0; index < tools::kUnits; ++index) {
        const auto unit = static_cast<Unit>(index);
        const std::string bytes = tools::BytesOf(unit);
        if (Tells(scores.OfFirst(unit))) printer.Add(bytes, {0, scores.OfFirst(unit)});
        if (Tells(scores.OfLater(unit))) printer.Add(kBehindAnother + bytes, {0, scores.OfLater(unit)});
    }
    std::map<Chain, tools::Deltas> of_pair;
    for (const auto& pair : pairs) of_pair.emplace(pair.chain, pair.deltas);
    const auto of_second = [&](Chain chain) {
        return of_pair.emplace(chain, scores.OfLater(tools::LastOf(chain))).first->second;
    };
    for (const auto& phrase : phrases) {
        // What stands on the way to the phrase, and its end, go on to say what they say elsewhere.
        of_second(phrase.chain >> 16);
        printer.Add(BytesOfChain(phrase.chain), {0, of_second(phrase.chain & kTwoUnits)}, BehindPhrase(phrase.verdict));
    }
    for (const auto& phrase : scores.DecidingPhrases()) {
        of_second(phrase.chain >> 16);
        printer.Add(BytesOfChain(phrase.chain), {phrase.verdict, {}});
    }
    for (const auto& [chain, deltas] : of_pair) printer.Add(BytesOfChain(chain), {0, deltas});
    printer.Print(std::cout);
    PrintBehindPhrases(scores);
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 6 || argc % 2 != 0) {
        std::cerr << "usage: detector_train RULES GBK_GRID BIG5_GRID CORPUS SEED [--without NAME,…] [--only NAME,…] "
                     "[--pairs 60000]\n";
        return 2;
    }
    tools::Selection selection;
    std::size_t pairs = 60'000;
    for (int i = 6; i < argc; i += 2) {
        const std::string name = argv[i];
        if (name == "--pairs") {
            pairs = std::stoull(argv[i + 1]);
        } else {
            (name == "--only" ? selection.only : selection.without) = tools::SplitList(argv[i + 1]);
        }
    }
    const tools::CodeToUnicode gbk = tools::ReadGrid(argv[2]), big5 = tools::ReadGrid(argv[3]);
    const std::vector<tools::Pattern> rules = tools::ReadPatterns(argv[1]);
    const std::uint64_t seed = std::stoull(argv[5]);
    const auto samples = tools::MakeSamples(tools::ReadCorpus(argv[4], selection), gbk, big5, seed);
    const auto counts = CountAll(samples, tools::Encoder(gbk, big5), seed);
    std::cout << kHeader;
    for (const tools::Pattern& rule : rules) std::cout << FormatPattern(rule) << '\n';
    PrintScores(tools::Scores(counts), pairs);
    std::cout.flush();
    return std::cout.good() ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "detector_train: " << error.what() << '\n';
    return 1;
}
