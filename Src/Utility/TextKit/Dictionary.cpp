#include "Utility/TextKit/Dictionary.h"

#include <algorithm>
#include <limits>
#include <new>
#include <numeric>

#include "Internal/Bytes.h"

namespace textkit {

using namespace utility::internal;

Dictionary::Dictionary(const std::vector<std::string_view>& words) {
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max() - 1;
    std::size_t bytes = 0;
    for (const std::string_view word : words) bytes += word.size();
    if (words.size() > kMost || bytes > kMost) throw std::bad_alloc();
    std::vector<std::uint32_t> order(words.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&words](std::uint32_t a, std::uint32_t b) {
        const int difference = words[a].compare(words[b]);
        return difference != 0 ? difference < 0 : a < b;
    });

    // The words that start alike, at each node of the depth that is being laid out.
    struct Node {
        std::uint32_t first, last;
    };
    std::vector<Node> level{{0, static_cast<std::uint32_t>(order.size())}}, next_level;
    labels_.push_back(0);
    for (std::size_t depth = 0; !level.empty(); ++depth) {
        next_level.clear();
        for (auto [first, last] : level) {
            first_child_.push_back(static_cast<std::uint32_t>(labels_.size()));
            const bool ends_here = first < last && words[order[first]].size() == depth;
            words_.push_back(ends_here ? order[first] + 1 : 0);
            while (first < last && words[order[first]].size() == depth) ++first;
            while (first < last) {
                const char label = words[order[first]][depth];
                std::uint32_t behind = first + 1;
                while (behind < last && words[order[behind]][depth] == label) ++behind;
                labels_.push_back(ToByte(label));
                next_level.push_back({first, behind});
                first = behind;
            }
        }
        level.swap(next_level);
    }
    first_child_.push_back(static_cast<std::uint32_t>(labels_.size()));
    labels_.shrink_to_fit();
    first_child_.shrink_to_fit();
    words_.shrink_to_fit();
}

Dictionary::Match Dictionary::Longest(std::string_view text) const noexcept {
    Match match;
    if (labels_.empty()) return match;  // moved from
    std::uint32_t node = 0;
    for (std::size_t length = 0; length < text.size();) {
        const auto begin = labels_.begin() + first_child_[node], end = labels_.begin() + first_child_[node + 1];
        const auto child = std::lower_bound(begin, end, ToByte(text[length]));
        if (child == end || *child != ToByte(text[length])) break;
        node = static_cast<std::uint32_t>(child - labels_.begin());
        ++length;
        if (words_[node] != 0) match = {length, words_[node] - 1};
    }
    return match;
}

}  // namespace textkit
