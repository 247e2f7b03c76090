#include "Utility/TextKit/Names.h"

#include <algorithm>
#include <cstddef>

#include "Internal/CodePointIndex.h"
#include "Internal/NameLists.h"
#include "Utility/TextKit/ChineseText.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr char kNameDots[] = "·・•‧･ 　";

// Length of the longest suffix word that `name` ends in, but is not; 0 for none.
std::size_t SuffixWordLength(std::string_view name) {
    std::size_t longest = 0;
    for (std::string_view words = kPlaceSuffixWordText; !words.empty();) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(words.size(), word.size() + 1));
        if (word.size() > longest && name.size() > word.size() &&
            name.compare(name.size() - word.size(), word.size(), word) == 0)
            longest = word.size();
    }
    return longest;
}

// Length of the suffix character that `name` ends in, but is not; 0 for none. All of them have three bytes.
std::size_t SuffixCharacterLength(std::string_view name) {
    constexpr std::size_t kLength = 3;
    if (name.size() <= kLength) return 0;
    const Character last = *Characters(name.substr(name.size() - kLength)).begin();
    return last.bytes.size() == kLength && kIndexOf<kPlaceSuffixCharacterText>.Contains(last.code_point) ? kLength : 0;
}

}  // namespace

ForeignName MatchForeignName(std::string_view word) {
    std::size_t length = 0, western = 0, slavonic = 0, japanese = 0;
    for (const Character& character : Characters(word)) {
        if (kIndexOf<kNameDots>.Contains(character.code_point)) continue;
        ++length;
        western += kIndexOf<kWesternNameText>.Contains(character.code_point);
        slavonic += kIndexOf<kCoreWesternNameText>.Contains(character.code_point);
        japanese += kIndexOf<kJapaneseNameText>.Contains(character.code_point);
    }
    const std::size_t most = std::max({western, slavonic, japanese});
    if (most == 0) return {};
    const double share = static_cast<double>(most) / static_cast<double>(length);
    if (japanese == most && (most < length || std::max(western, slavonic) < most)) return {NameStyle::kJapanese, share};
    return {western == most ? NameStyle::kWestern : NameStyle::kSlavonic, share};
}

PlaceName SplitPlaceName(std::string_view name) {
    std::size_t length = SuffixWordLength(name);
    if (length == 0) length = SuffixCharacterLength(name);
    return {name.substr(0, name.size() - length), name.substr(name.size() - length)};
}

}  // namespace textkit
