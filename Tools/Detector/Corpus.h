#ifndef UTILITY_TOOLS_CORPUS_H
#define UTILITY_TOOLS_CORPUS_H

// Text to learn from and to judge by: a folder with the subfolders hans (Simplified) and hant (Traditional), in them
// files of UTF-8. "*.txt" is running text; "*.tsv" has a word, a tab and its frequency on each line.

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "Common/CharacterGrid.h"

namespace tools {

using utility::internal::Channel;
using utility::internal::kBig5Channel;
using utility::internal::kGbkChannel;
using utility::internal::kUnicodeChannel;
using utility::internal::kUtf8Channel;

struct TextFile {
    std::string name;  // "hant/guide.txt"
    bool traditional = false;
    std::u16string text;                                          // of a txt file
    std::vector<std::pair<std::u16string, std::uint64_t>> words;  // of a tsv file
};

// Which files: those whose name contains one of `only` (all if it is empty) and none of `without`.
struct Selection {
    std::vector<std::string> only, without;
    bool Takes(const std::string& name) const;
};

// In the order of the names. Characters beyond the Basic Multilingual Plane are left out. Throws std::runtime_error.
std::vector<TextFile> ReadCorpus(const std::filesystem::path& folder, const Selection& selection);

// "a,b" as {"a", "b"}.
std::vector<std::string> SplitList(const std::string& list);

// A character that counts as Chinese: of the unified ideographs and their first extension.
bool IsHan(char16_t character);

// Writes text in the encodings that the detector tells apart.
class Encoder {
public:
    Encoder(const CodeToUnicode& gbk, const CodeToUnicode& big5);

    // Whether `encoding` has the character; appends it if so.
    bool Append(Channel encoding, char16_t character, std::string& bytes) const;
    // The characters that it has not are left out. Surrogate pairs are one character in UTF-8, two units in UCS-2.
    std::string Encode(Channel encoding, const std::u16string& text) const;
    // Empty unless the encoding has all characters and half of them or more are Chinese.
    std::string EncodeWindow(Channel encoding, const std::u16string& window) const;

private:
    std::array<std::uint16_t, 0x10000> gbk_{};
    std::array<std::uint16_t, 0x10000> big5_{};
};

// Reproducible on every platform, which the distributions of <random> are not.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }

private:
    std::uint64_t Next();
    std::uint64_t state_;
};

}  // namespace tools

#endif
