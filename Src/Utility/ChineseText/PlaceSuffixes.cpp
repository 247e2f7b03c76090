#include "Utility/ChineseText/PlaceSuffixes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Internal/CharacterSet.h"
#include "Internal/NameLists.h"

namespace {

using utility::internal::kPlaceSuffixCharacters;
using utility::internal::kPlaceSuffixWords;
using utility::internal::kSetOf;
using utility::internal::ToByte;

constexpr std::size_t kLongestSuffix = 8;

// The last eight bytes of a text as a number, the very last in the lowest place; zeros stand for what a
// shorter text lacks, and as no suffix has a zero byte, they match none.
constexpr std::uint64_t TailOf(std::string_view text) {
    std::uint64_t tail = 0;
    for (std::size_t pos = text.size() < kLongestSuffix ? 0 : text.size() - kLongestSuffix; pos < text.size(); ++pos) {
        tail = tail << 8 | ToByte(text[pos]);
    }
    return tail;
}

struct SuffixWord {
    std::uint64_t tail = 0;
    std::uint64_t mask = 0;
    std::size_t length = 0;
};

constexpr std::array<SuffixWord, 50> SplitWords(std::string_view words) {
    std::array<SuffixWord, 50> table{};
    std::size_t count = 0;
    for (std::size_t start = 0, pos = 0; pos <= words.size(); ++pos) {
        if (pos < words.size() && words[pos] != ' ') continue;
        const std::size_t length = pos - start;
        if (count == table.size() || length == 0 || length > kLongestSuffix) throw "not the words expected";
        table[count++] = {TailOf(words.substr(start, length)), ~std::uint64_t{0} >> (64 - 8 * length), length};
        start = pos + 1;
    }
    if (count != table.size()) throw "fewer words than expected";
    return table;
}

constexpr std::array<SuffixWord, 50> kSuffixWords = SplitWords(kPlaceSuffixWords.view());

std::size_t SuffixLength(std::string_view name) {
    const std::uint64_t tail = TailOf(name);
    for (const SuffixWord& word : kSuffixWords) {
        if ((tail & word.mask) == word.tail) return word.length;
    }
    if (name.size() < 2) return 0;
    return kSetOf<kPlaceSuffixCharacters>.Contains({ToByte(name[name.size() - 2]), ToByte(name.back())}) ? 2 : 0;
}

}  // namespace

bool PostfixSplit(const char* word, char* stem, char* suffix) {
    const std::string_view name(word);
    const std::size_t stem_length = name.size() - SuffixLength(name);
    std::memcpy(stem, word, stem_length);
    stem[stem_length] = '\0';
    std::memcpy(suffix, word + stem_length, name.size() - stem_length + 1);
    return true;
}
