#include "Utility/StringToolkit/WordPosition.h"

#include <cstddef>
#include <utility>

#include "Internal/SubstringSearch.h"
#include "Utility/StringToolkit/Trimming.h"

using utility::internal::FindFirst;
using utility::internal::FindLast;

namespace {

constexpr std::size_t kNone = std::string::npos;

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes the word by value
bool gfn_bGetWordPos(const std::string& text, std::string& before, std::string& after, std::string word) {
    const bool is_empty = text.empty();
    const std::size_t word_pos = word.empty() ? kNone : FindFirst(text, word, 0);
    if (word_pos == kNone) {
        before = text;
        after.clear();
        return !is_empty;
    }
    std::string front = text.substr(0, word_pos);
    std::string back = text.substr(word_pos + word.size());
    gfn_bTrimWord(front);
    gfn_bTrimWord(back);
    before = std::move(front);
    after = std::move(back);
    return !before.empty();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes the markers by value
bool IsInRange(const std::string& text, std::string open, std::string close, unsigned int position) {
    const std::size_t opening = FindLast(text, open, position);
    const std::size_t closing = FindFirst(text, close, position);
    if (opening == kNone || closing == kNone) return false;
    const bool closed_before = FindFirst(text, close, opening) < position;
    return !closed_before && FindLast(text, open, closing) <= position;
}
