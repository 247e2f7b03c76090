#ifndef UTILITY_TOOLS_SAMPLES_H
#define UTILITY_TOOLS_SAMPLES_H

// The text that the trainer learns from, weighed so that no kind of text drowns the others.

#include <cstdint>
#include <string>
#include <vector>

#include "Detector/Corpus.h"

namespace tools {

struct Sample {
    std::u16string text;
    bool traditional;
    bool utf8_only;
    double share;  // of the sample among all of the same script
};

// Running text in groups, each weighed by the square root of its length: files whose names begin alike, up to the first
// underscore, make one. Words in proportion to their frequency, in random order. Every character of the
// character sets, and their symbols in rows. A little text in other scripts than Chinese, for UTF-8 alone.
std::vector<Sample> MakeSamples(const std::vector<TextFile>& files, const CodeToUnicode& gbk, const CodeToUnicode& big5,
                                std::uint64_t seed);

}  // namespace tools

#endif
