// detector_evaluate: how often and how fast the encoding detector is right, beside other detectors.
//
//     detector_evaluate DATA_FILE GBK_GRID BIG5_GRID CORPUS [--without NAME,…] [--only NAME,…] [--windows 1000]
//                       [--seed 1] [--peers yes] [--tables accuracy,cut,other,mixed,speed]
//
// CORPUS is a folder as in Corpus.h; Trials.h says what is made of it. Prints tables in Markdown, all unless some are
// named. "ours" is the detector as it is, "full scan" the same with its direct verdicts taken out, so that every text
// is read to its end.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "CodeMaps/DataFileTool.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Detector/Corpus.h"
#include "Detector/Peers.h"
#include "Detector/Trials.h"

namespace {

using tools::Case;
using tools::Detector;
using tools::kCases;
using Texts = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kSizes[] = {2, 3, 4, 8, 16, 32, 128, 512};

struct Options {
    tools::Selection selection;
    std::size_t windows = 1000;
    std::uint64_t seed = 1;
    bool peers = true;
    std::vector<std::string> tables = {"accuracy", "cut", "other", "mixed", "speed"};

    bool Wants(const char* table) const { return std::find(tables.begin(), tables.end(), table) != tables.end(); }
};

Options ParseOptions(int count, char** words) {
    Options options;
    for (int i = 0; i + 1 < count; i += 2) {
        const std::string name = words[i], value = words[i + 1];
        if (name == "--only") {
            options.selection.only = tools::SplitList(value);
        } else if (name == "--without") {
            options.selection.without = tools::SplitList(value);
        } else if (name == "--windows") {
            options.windows = std::stoull(value);
        } else if (name == "--seed") {
            options.seed = std::stoull(value);
        } else if (name == "--peers") {
            options.peers = value != "no";
        } else if (name == "--tables") {
            options.tables = tools::SplitList(value);
        } else {
            throw std::runtime_error("no option " + name);
        }
    }
    return options;
}

// How many texts get each code.
std::map<int, std::size_t> Verdicts(const Detector& detector, const Texts& texts) {
    std::map<int, std::size_t> verdicts;
    for (const std::string& text : texts) ++verdicts[detector.detect(text)];
    return verdicts;
}

double PercentRight(const Detector& detector, const Texts& texts, int expected) {
    if (texts.empty()) throw std::runtime_error("too little text for a cell");
    return 100.0 * static_cast<double>(Verdicts(detector, texts)[expected]) / static_cast<double>(texts.size());
}

// Texts in other encodings that were taken for UCS-2, of how many.
struct FalseUcs2 {
    std::size_t taken = 0, all = 0;

    void Count(const Detector& detector, const Texts& texts) {
        taken += Verdicts(detector, texts)[ENCODE_UNICODE];
        all += texts.size();
    }
};

// A figure of a table, after a bar.
void PrintCell(double value, int digits = 2) {
    std::printf(" | %.*f", digits, value);
}

std::string NameOf(int code) {
    const std::map<int, std::string> kNames = {{ENCODE_UNKNOWN, "none"},
                                               {ENCODE_UTF8, "UTF-8"},
                                               {ENCODE_GBK, "GBK"},
                                               {ENCODE_BIG5, "Big5"},
                                               {ENCODE_UNICODE, "UCS-2LE"}};
    const auto name = kNames.find(code);
    return name == kNames.end() ? std::to_string(code) : name->second;
}

// Windows by size, short text in markup, whole pages.
std::vector<Texts> MakeCells(const tools::TrialMaker& maker, const Case& which) {
    std::vector<Texts> cells;
    for (const std::size_t size : kSizes) cells.push_back(maker.Windows(which, size));
    cells.push_back(maker.ShortInMarkup(which));
    cells.push_back(maker.Pages(which));
    return cells;
}

void PrintAccuracy(const std::vector<Detector>& detectors, const tools::TrialMaker& maker) {
    std::printf("## Right, in per cent, by characters\n\n| detector | encoding");
    for (const std::size_t size : kSizes) std::printf(" | %zu", size);
    std::printf(" | 7 in markup | page | mean |\n|---|---");
    for (std::size_t i = 0; i < std::size(kSizes) + 3; ++i) std::printf("|---:");
    std::printf("|\n");
    std::vector<std::vector<Texts>> cells;
    cells.reserve(std::size(kCases));
    for (const Case& which : kCases) cells.push_back(MakeCells(maker, which));
    for (const Detector& detector : detectors) {
        double sum_without_ucs2 = 0;
        for (std::size_t i = 0; i < kCases.size(); ++i) {
            std::printf("| %s | %s", detector.name.c_str(), kCases[i].name);
            double sum = 0;
            for (const Texts& texts : cells[i]) {
                const double percent = PercentRight(detector, texts, kCases[i].expected);
                sum += percent;
                PrintCell(percent);
            }
            const double mean = sum / static_cast<double>(cells[i].size());
            PrintCell(mean);
            std::printf(" |\n");
            if (kCases[i].expected != ENCODE_UNICODE) sum_without_ucs2 += mean / (kCases.size() - 1);
        }
        std::printf("| %s | mean without UCS-2LE", detector.name.c_str());
        for (std::size_t i = 0; i < cells[0].size(); ++i) std::printf(" |");
        PrintCell(sum_without_ucs2);
        std::printf(" |\n");
    }
    std::printf("\nTaken for UCS-2LE of the others (windows; short text in markup and pages):\n\n");
    for (const Detector& detector : detectors) {
        FalseUcs2 windows, pages;
        for (std::size_t i = 0; i < kCases.size(); ++i)
            for (std::size_t j = 0; j < cells[i].size() && kCases[i].expected != ENCODE_UNICODE; ++j)
                (j < std::size(kSizes) ? windows : pages).Count(detector, cells[i][j]);
        std::printf("- %s: %zu of %zu; %zu of %zu\n", detector.name.c_str(), windows.taken, windows.all, pages.taken,
                    pages.all);
    }
    std::printf("\n");
}

// Texts that begin or end inside a character.
void PrintCutTexts(const std::vector<Detector>& detectors, const tools::TrialMaker& maker) {
    std::printf(
        "## Without the first, or the last, byte: right, in per cent\n\n| detector | encoding | 16, first | 16, last "
        "| 128, first | 128, last |\n|---|---|---:|---:|---:|---:|\n");
    for (const Detector& detector : detectors) {
        for (const Case& which : kCases) {
            std::printf("| %s | %s", detector.name.c_str(), which.name);
            for (const std::size_t size : std::initializer_list<std::size_t>{16, 128}) {
                Texts texts = maker.Windows(which, size), ends = texts;
                for (std::string& text : texts) text.erase(0, 1);
                for (std::string& text : ends) text.pop_back();
                PrintCell(PercentRight(detector, texts, which.expected), 1);
                PrintCell(PercentRight(detector, ends, which.expected), 1);
            }
            std::printf(" |\n");
        }
    }
    std::printf("\n");
}

void PrintOtherTexts(const std::vector<Detector>& detectors, std::uint64_t seed) {
    std::vector<tools::OtherText> others = tools::OtherTexts(seed);
    others.push_back({"ASCII: prose, markup, programs", tools::AsciiTexts()});
    std::printf("## Taken for what\n\n| text");
    for (const Detector& detector : detectors) std::printf(" | %s", detector.name.c_str());
    std::printf(" |\n|---");
    for (std::size_t i = 0; i < detectors.size(); ++i) std::printf("|---");
    std::printf("|\n");
    for (const tools::OtherText& other : others) {
        std::printf("| %s (%zu)", other.name.c_str(), other.texts.size());
        for (const Detector& detector : detectors) {
            std::printf(" |");
            for (const auto& [code, count] : Verdicts(detector, other.texts))
                std::printf(" %s %zu", NameOf(code).c_str(), count);
        }
        std::printf(" |\n");
    }
    std::printf("\n");
}

// Right is the encoding of the longer part; of two halves either.
void PrintMixedPages(const std::vector<Detector>& detectors, const tools::TrialMaker& maker) {
    constexpr std::size_t kPercents[] = {25, 50, 75};
    std::printf(
        "## Pages that change their encoding: right, in per cent, by the share of the first part\n\n| detector");
    for (const std::size_t percent : kPercents) std::printf(" | %zu", percent);
    std::printf(" |\n|---|---:|---:|---:|\n");
    for (const Detector& detector : detectors) {
        std::printf("| %s", detector.name.c_str());
        for (const std::size_t percent : kPercents) {
            double right = 0, all = 0;
            for (const Case& first : kCases) {
                for (const Case& rest : kCases) {
                    if (first.expected == rest.expected || first.expected == ENCODE_UNICODE ||
                        rest.expected == ENCODE_UNICODE)
                        continue;
                    for (const std::string& page : maker.MixedPages(first, rest, percent)) {
                        const int code = detector.detect(page);
                        right += (percent >= 50 && code == first.expected) || (percent <= 50 && code == rest.expected);
                        ++all;
                    }
                }
            }
            PrintCell(100 * right / all, 1);
        }
        std::printf(" |\n");
    }
    std::printf("\n");
}

// Megabytes in a second of processor time over all texts, the best of a few rounds.
double Speed(const Detector& detector, const Texts& texts) {
    constexpr std::clock_t kRound = CLOCKS_PER_SEC / 25;
    constexpr int kRounds = 5;
    double size = 0, best = 0;
    for (const std::string& text : texts) size += static_cast<double>(text.size());
    for (int round = 0; round < kRounds; ++round) {
        long passes = 0;
        std::clock_t taken = 0;
        for (const std::clock_t start = std::clock(); taken < kRound; taken = std::clock() - start, ++passes)
            for (const std::string& text : texts) detector.detect(text);
        best = std::max(best, static_cast<double>(passes) * size * CLOCKS_PER_SEC / 1e6 / static_cast<double>(taken));
    }
    return best;
}

void PrintSpeed(const std::vector<Detector>& detectors, const tools::TrialMaker& maker) {
    constexpr std::size_t kTexts = 200;
    std::printf(
        "## Speed, MB/s\n\n| detector | encoding | 16 characters | 128 characters | pages | 1 MiB of text |\n"
        "|---|---|---:|---:|---:|---:|\n");
    for (const Detector& detector : detectors) {
        for (const Case& which : kCases) {
            std::printf("| %s | %s", detector.name.c_str(), which.name);
            for (Texts texts : {maker.Windows(which, 16), maker.Windows(which, 128), maker.Pages(which)}) {
                texts.resize(std::min(texts.size(), kTexts));
                PrintCell(Speed(detector, texts), 1);
            }
            PrintCell(Speed(detector, {maker.LongText(which)}), 1);
            std::printf(" |\n");
        }
    }
    std::printf("\n");
}

// The data file without the verdicts of the middle of a text, as a file that is gone at the end.
class FullScanFile {
public:
    explicit FullScanFile(const char* data_file) {
        tools::DataFile data = tools::ReadDataFile(data_file);
        for (auto& record : data.records)
            if (utility::internal::VerdictOf(record.nValue) != 0) record.nValue = utility::internal::kNeutralValue;
        tools::WriteDataFile(path_, data);
    }
    FullScanFile(const FullScanFile&) = delete;
    FullScanFile& operator=(const FullScanFile&) = delete;
    ~FullScanFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                  ("full_scan." + std::to_string(Clock::now().time_since_epoch().count()));
};

double Load(const std::string& data_file) {
    const auto start = Clock::now();
    if (CodeTrans_Initialize(data_file.c_str()) != 0) throw std::runtime_error(data_file + ": cannot be loaded");
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void PrintLoadTime(const std::string& data_file) {
    constexpr std::size_t kLoads = 11;
    std::vector<double> times, processor_times;
    while (times.size() < kLoads) {
        const std::clock_t start = std::clock();
        times.push_back(Load(data_file));
        processor_times.push_back(1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    const double first = times[0];
    std::sort(times.begin(), times.end());
    std::sort(processor_times.begin(), processor_times.end());
    std::printf(
        "Data file: %ju bytes. Loaded in %.1f ms the first time, median of %zu %.1f ms, %.1f ms of processor time.\n\n",
        static_cast<std::uintmax_t>(std::filesystem::file_size(data_file)), first, kLoads, times[kLoads / 2],
        processor_times[kLoads / 2]);
}

void PrintTables(const std::vector<Detector>& detectors, const tools::TrialMaker& maker, const Options& options) {
    if (options.Wants("accuracy")) PrintAccuracy(detectors, maker);
    if (options.Wants("cut")) PrintCutTexts(detectors, maker);
    if (options.Wants("other")) PrintOtherTexts(detectors, options.seed);
    if (options.Wants("mixed")) PrintMixedPages(detectors, maker);
    if (options.Wants("speed")) PrintSpeed(detectors, maker);
}

void Evaluate(char** paths, Options options) {
    const tools::Encoder encoder(tools::ReadGrid(paths[1]), tools::ReadGrid(paths[2]));
    const auto files = tools::ReadCorpus(paths[3], options.selection);
    const tools::TrialMaker maker(files, encoder, options.windows, options.seed);
    PrintLoadTime(paths[0]);
    std::vector<Detector> detectors = options.peers ? tools::Peers() : std::vector<Detector>();
    detectors.insert(detectors.begin(), tools::OurDetector("ours"));
    PrintTables(detectors, maker, options);

    const FullScanFile full_scan(paths[0]);
    Load(full_scan.path());
    const auto is_left_out = [](const std::string& table) { return table == "cut" || table == "other"; };
    options.tables.erase(std::remove_if(options.tables.begin(), options.tables.end(), is_left_out),
                         options.tables.end());
    PrintTables({tools::OurDetector("full scan")}, maker, options);
    CodeTrans_Destroy();
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 5 || argc % 2 == 0) {
        std::cerr << "usage: detector_evaluate DATA_FILE GBK_GRID BIG5_GRID CORPUS [--without NAME,…] [--only NAME,…]\n"
                     "       [--windows 1000] [--seed 1] [--peers yes] [--tables accuracy,cut,other,mixed,speed]\n";
        return 2;
    }
    Evaluate(argv + 1, ParseOptions(argc - 5, argv + 5));
    return 0;
} catch (const std::exception& error) {
    std::cerr << "detector_evaluate: " << error.what() << '\n';
    return 1;
}
