#ifndef UTILITY_CODETRANS_DETECTIONCORE_H
#define UTILITY_CODETRANS_DETECTIONCORE_H

// The detector, run on any tables.

#include <cstddef>
#include <cstdint>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "CodeTrans/CodeMaps/ScanForm.h"

namespace utility::internal {

// An automaton that somebody else owns; null without one. Every failure link leads to the root.
struct DetectionTable {
    const _tTrieNode* states = nullptr;
    std::size_t count = 0;
    const ScanForm* form = nullptr;  // made of the same states; null without, then the states themselves serve
};

struct DetectionResult {
    int encoding = 0;       // as CodeTrans_CodeDetect returns it
    bool declared = false;  // a state gave the verdict, after a byte-order mark for instance
    // Points by which the winner's sum exceeds the best of the others; 0 where the verdict is declared or undecided.
    std::int64_t lead = 0;
};

DetectionResult DetectEncoding(const DetectionTable& table, const char* text, std::size_t length);

}  // namespace utility::internal

#endif
