// detector_evaluate: how often the encoding detector is right.
//
//     detector_evaluate DATA_FILE GBK_GRID BIG5_GRID CORPUS [--without NAME,…] [--only NAME,…] [--windows 1000]
//                       [--sizes 16,128] [--seed 1]
//
// CORPUS is a folder as in Corpus.h. A window is a run of characters from anywhere in the running text, at least half of
// them Chinese and all of them in the encoding at hand. Prints a table: encoding, size, right of all, what the others
// were taken for; then the same for whole files.

#include <algorithm>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Detection.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "Detector/Corpus.h"

namespace {

struct Case {
    const char* name;
    tools::Channel encoding;
    bool simplified, traditional;
    int expected;
};

constexpr Case kCases[] = {
    {"GBK, Simplified", utility::internal::kGbkChannel, true, false, ENCODE_GBK},
    {"GBK, Traditional", utility::internal::kGbkChannel, false, true, ENCODE_GBK},
    {"Big5", utility::internal::kBig5Channel, false, true, ENCODE_BIG5},
    {"UTF-8", utility::internal::kUtf8Channel, true, true, ENCODE_UTF8},
    {"UCS-2LE", utility::internal::kUnicodeChannel, true, true, ENCODE_UNICODE},
};

struct Options {
    tools::Selection selection;
    std::size_t windows = 1000;
    std::vector<std::size_t> sizes = {16, 128};
    std::uint64_t seed = 1;
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
        } else if (name == "--sizes") {
            options.sizes.clear();
            for (const std::string& size : tools::SplitList(value)) options.sizes.push_back(std::stoull(size));
        } else {
            throw std::runtime_error("no option " + name);
        }
    }
    return options;
}

class Tally {
public:
    Tally(const Case& which, std::string size) : which_(which), size_(std::move(size)) {}
    void Judge(const std::string& bytes) {
        const int code = CodeTrans_CodeDetect(bytes.data(), bytes.size());
        ++verdicts_[code];
        ++count_;
    }
    void Print() {
        std::cout << which_.name << '\t' << size_ << '\t' << verdicts_[which_.expected] << " of " << count_;
        for (const auto& [code, count] : verdicts_)
            if (code != which_.expected) std::cout << '\t' << count << " as " << code;
        std::cout << '\n';
    }

private:
    const Case& which_;
    std::string size_;
    std::map<int, std::size_t> verdicts_;
    std::size_t count_ = 0;
};

bool TakesPart(const Case& which, const tools::TextFile& file) {
    return file.words.empty() && (file.traditional ? which.traditional : which.simplified);
}

// The window as bytes, empty if it does not qualify.
std::string EncodeWindow(const tools::Encoder& encoder, tools::Channel encoding, const std::u16string& window) {
    const auto han = std::count_if(window.begin(), window.end(), tools::IsHan);
    std::string bytes;
    if (static_cast<std::size_t>(han) * 2 < window.size()) return bytes;
    for (const char16_t character : window)
        if (!encoder.Append(encoding, character, bytes)) return {};
    return bytes;
}

void JudgeWindows(const Case& which, const std::vector<tools::TextFile>& files, const tools::Encoder& encoder,
                  std::size_t size, const Options& options) {
    constexpr std::size_t kTriesPerWindow = 100;
    std::u16string text;
    for (const tools::TextFile& file : files)
        if (TakesPart(which, file)) text += file.text;
    Tally tally(which, std::to_string(size));
    tools::Random random(options.seed);
    std::size_t found = 0;
    for (std::size_t tries = 0; found < options.windows && tries < options.windows * kTriesPerWindow; ++tries) {
        if (text.size() < size) break;
        const std::u16string window = text.substr(random.Below(text.size() - size + 1), size);
        const std::string bytes = EncodeWindow(encoder, which.encoding, window);
        if (bytes.empty()) continue;
        tally.Judge(bytes);
        ++found;
    }
    tally.Print();
}

void JudgeFiles(const Case& which, const std::vector<tools::TextFile>& files, const tools::Encoder& encoder) {
    Tally tally(which, "file");
    for (const tools::TextFile& file : files)
        if (TakesPart(which, file)) tally.Judge(encoder.Encode(which.encoding, file.text));
    tally.Print();
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 5 || argc % 2 == 0) {
        std::cerr << "usage: detector_evaluate DATA_FILE GBK_GRID BIG5_GRID CORPUS [--without NAME,…] "
                     "[--only NAME,…]\n"
                     "       [--windows 1000] [--sizes 16,128] [--seed 1]\n";
        return 2;
    }
    const Options options = ParseOptions(argc - 5, argv + 5);
    if (CodeTrans_Initialize(argv[1]) != 0) throw std::runtime_error(std::string(argv[1]) + ": cannot be loaded");
    const tools::Encoder encoder(tools::ReadGrid(argv[2]), tools::ReadGrid(argv[3]));
    const auto files = tools::ReadCorpus(argv[4], options.selection);
    for (const Case& which : kCases) {
        for (const std::size_t size : options.sizes) JudgeWindows(which, files, encoder, size, options);
        JudgeFiles(which, files, encoder);
    }
    CodeTrans_Destroy();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "detector_evaluate: " << error.what() << '\n';
    return 1;
}
