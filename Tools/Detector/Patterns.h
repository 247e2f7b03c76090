#ifndef UTILITY_TOOLS_PATTERNS_H
#define UTILITY_TOOLS_PATTERNS_H

// The readable form of the encoding detector: byte patterns and what each says about the encoding.
//
// One pattern a line, the parts in this order:
//
//     ^                    optional: only at the very start of the text
//     B0A1  [80-FF][40 5B] the bytes: two hexadecimal digits, or a class of bytes and ranges. Classes make a pattern of
//                          every combination.
//     = 1                  a verdict: the text is in the encoding of that code, whatever follows. Or
//     : 7 -9 1 -9          deltas for GBK, Big5, Unicode (UCS-2, low byte first) and UTF-8: -9 to 10, UTF-8 to 23. Or
//                          Or neither: a step without a score.
//     >  > B0A1            optional: the pattern (nothing: the state between patterns) that takes the next byte where
//                          no longer pattern does. Otherwise it is the longest pattern that the bytes end in. It need
//                          not be a part of these bytes: it may stand for anything that has been seen.
//
// Lines that start with '#' are comments. A later line for the same bytes replaces what it states and keeps the rest.

#include <array>
#include <bitset>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CodeTrans/CodeMaps/DataFile.h"

namespace tools {

using utility::internal::kBig5Channel;
using utility::internal::kChannels;
using utility::internal::kGbkChannel;
using utility::internal::kUnicodeChannel;
using utility::internal::kUtf8Channel;

using Deltas = std::array<int, kChannels>;
using ByteClass = std::bitset<256>;

// Verdict 0 and no delta: the state is passed without a trace.
struct Effect {
    int verdict = 0;
    Deltas deltas{};
    bool operator==(const Effect& other) const { return verdict == other.verdict && deltas == other.deltas; }
};

struct Pattern {
    bool at_start = false;
    std::vector<ByteClass> bytes;
    std::optional<Effect> effect;
    std::optional<std::string> fallback;
};

// Throw std::runtime_error; the file form with file name and line number.
Pattern ParsePattern(std::string_view line);
std::vector<Pattern> ReadPatterns(const std::filesystem::path& path);

// The line without its line end.
std::string FormatPattern(const Pattern& pattern);
std::string FormatBytes(std::string_view bytes);
std::string FormatEffect(const Effect& effect);

// The value field of an automaton record, and back. Packing throws std::runtime_error on what does not fit.
std::int32_t PackEffect(const Effect& effect);
Effect UnpackEffect(std::int32_t value);

// Calls visit(bytes) for each byte string that the pattern stands for.
template <typename Visit>
void ForEachString(const Pattern& pattern, const Visit& visit, std::string prefix = {}) {
    if (prefix.size() == pattern.bytes.size()) return visit(prefix);
    const ByteClass& next = pattern.bytes[prefix.size()];
    for (std::size_t byte = 0; byte < next.size(); ++byte)
        if (next[byte]) ForEachString(pattern, visit, prefix + static_cast<char>(byte));
}

}  // namespace tools

#endif
