#ifndef UTILITY_TOOLS_TRIALS_H
#define UTILITY_TOOLS_TRIALS_H

// What detectors are tried on: windows and pages made of a folder of text, and text in none of the encodings.

#include <array>
#include <string>
#include <vector>

#include "Detector/Corpus.h"

namespace tools {

// A script in an encoding, and its code of EncodingCodes.h.
struct Case {
    const char* name;
    Channel encoding;
    bool simplified, traditional;
    int expected;
};
extern const std::array<Case, 5> kCases;  // UCS-2 last

class TrialMaker {
public:
    TrialMaker(const std::vector<TextFile>& files, const Encoder& encoder, std::size_t most, std::uint64_t seed)
        : files_(files), encoder_(encoder), most_(most), seed_(seed) {}

    // As many as `most` runs of `size` characters from anywhere in the running text, at least half of them Chinese and
    // all of them in the encoding.
    std::vector<std::string> Windows(const Case& which, std::size_t size) const;
    // Runs of seven Chinese characters, each inside a page of English markup.
    std::vector<std::string> ShortInMarkup(const Case& which) const;
    // Each file in parts of some thousand characters, as pages of HTML. Parts with hardly any Chinese, such as lists of
    // English names, are no pages.
    std::vector<std::string> Pages(const Case& which) const;
    // Pages whose first part is in one encoding and whose rest, from `percent` of it on, is in another.
    std::vector<std::string> MixedPages(const Case& first, const Case& rest, std::size_t percent) const;
    // About a mebibyte of running text, repeated if there is less.
    std::string LongText(const Case& which) const;

private:
    std::u16string TextOf(const Case& which) const;
    std::vector<std::u16string> PartsOf(const Case& which) const;

    const std::vector<TextFile>& files_;
    const Encoder& encoder_;
    std::size_t most_;
    std::uint64_t seed_;
};

struct OtherText {
    std::string name;
    std::vector<std::string> texts;
};
// Texts in other languages and encodings, and random bytes.
std::vector<OtherText> OtherTexts(std::uint64_t seed);
// ASCII: prose, markup, programs, in pieces of every length.
std::vector<std::string> AsciiTexts();

}  // namespace tools

#endif
